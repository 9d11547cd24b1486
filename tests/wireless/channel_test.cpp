// The automatic channel and the wait for its scan.
#include "live/interfaces.h"
#include "profile/sample_radios.h"

namespace {

constexpr const char* kStatus = "/var/run/scan_status";
const std::string kPoll = "$ /sbin/iwpriv ra0 get_scan_status > /var/run/scan_status\n";

class AutomaticChannel : public harness::SampleRadios {
protected:
    AutomaticChannel() {
        record(0).channel = 0;
        board::set_interface_up("ra0", true);
    }
    // The journal of an apply up to the first interface that goes down.
    std::string selection() {
        clear_journal();
        apply(0);
        const std::string text = journal_text();
        return text.substr(0, text.find("$2 /sbin/brctl delif br0 ra0"));
    }
    static std::string polls(int running, bool ended) {
        std::string lines = "best_channel ra0 US 20\n";
        for (int i = 0; i < running; ++i) lines += kPoll + "sleep 1\n";
        return ended ? lines + kPoll : lines;
    }
};

TEST_F(AutomaticChannel, WaitsForTheEndOfTheScan) {
    EXPECT_EQ(polls(0, true), selection());  // without a status
    const std::string x61(61, 'x');
    for (const std::string& status :
         harness::Lines{"", "0", "0\n", "ra0 scan:0\r\n", x61 + ":0", x61 + ":01", "\n"}) {
        write(kStatus, status);
        EXPECT_EQ(polls(0, true), selection()) << status;
    }
    for (const char* status : {"1", "x:1", "x:", "x: 0", "00", "x:y:0", "0:1"}) {
        write(kStatus, status);
        EXPECT_EQ(polls(10, false), selection()) << status;
    }
    int poll = 0;
    on_command = [&](const std::string& command) {
        if ("$ " + command + '\n' == kPoll) write(kStatus, ++poll < 10 ? "x:1\n" : "x:0\n");
        return 1;
    };
    EXPECT_EQ(polls(9, true), selection());
}

TEST_F(AutomaticChannel, LeavesADownInterfaceDown) {
    board::set_interface_up("ra0", false);
    harness::put_text(record(0).country_code, "ABCDEFGH");
    EXPECT_EQ("ifup ra0\nbest_channel ra0 ABCDEFGH 20\n" + kPoll + "ifdown ra0\n", selection());
}

}  // namespace
