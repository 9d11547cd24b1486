// The automatic channel and the wait for its scan.
#include "live/interfaces.h"
#include "profile/sample_radios.h"

namespace {

using harness::Lines;

constexpr const char* kStatus = "/var/run/scan_status";
const std::string kPoll = "$ /sbin/iwpriv ra0 get_scan_status > /var/run/scan_status";

class AutomaticChannel : public harness::SampleRadios {
protected:
    AutomaticChannel() {
        record(0).channel = 0;
        board::set_interface_up("ra0", true);
    }
    // The journal of an apply up to the first interface that goes down.
    Lines selection() {
        clear_journal();
        apply(0);
        Lines lines = journal();
        lines.erase(std::ranges::find(lines, "$2 /sbin/brctl delif br0 ra0"), lines.end());
        return lines;
    }
    static Lines polls(int running, bool ended) {
        Lines lines = {"best_channel ra0 US 20"};
        for (int i = 0; i < running; ++i) lines.insert(lines.end(), {kPoll, "sleep 1"});
        if (ended) lines.push_back(kPoll);
        return lines;
    }
};

TEST_F(AutomaticChannel, WaitsForTheEndOfTheScan) {
    const std::string x61(61, 'x');
    for (const std::string& status :
         {std::string(), std::string("0"), std::string("0\n"), std::string("ra0 scan:0\r\n"),
          x61 + ":0", x61 + ":01", std::string("\n")}) {
        write(kStatus, status);
        EXPECT_EQ(polls(0, true), selection()) << status;
    }
    for (const char* status : {"1", "x:1", "x:", "x: 0", "00", "x:y:0", "0:1"}) {
        write(kStatus, status);
        EXPECT_EQ(polls(10, false), selection()) << status;
    }
    remove(kStatus);
    EXPECT_EQ(polls(0, true), selection());
}

TEST_F(AutomaticChannel, PollsUntilTheEnd) {
    int poll = 0;
    on_command = [&](const std::string& command) {
        if ("$ " + command == kPoll) write(kStatus, ++poll < 10 ? "x:1\n" : "x:0\n");
        return 1;
    };
    EXPECT_EQ(polls(9, true), selection());
}

TEST_F(AutomaticChannel, LeavesADownInterfaceDown) {
    board::set_interface_up("ra0", false);
    harness::put_text(record(0).country_code, "ABCDEFGH");
    EXPECT_EQ((Lines{"ifup ra0", "best_channel ra0 ABCDEFGH 20", kPoll, "ifdown ra0"}),
              selection());
}

}  // namespace
