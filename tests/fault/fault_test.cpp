// Every call to the system that an exported function makes fails, or is interrupted by a signal,
// one after the other.
#include <linux/wireless.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

#include "board/host/state.h"
#include "board/model/interfaces.h"
#include "tests/fault/calls.h"
#include "tests/support/board.h"
#include "tests/switch/switch_board.h"

namespace {

using fault::Call;
using fault::kCalls;
using harness::Lines;

constexpr const char* kFaults[] = {"fopen",  "fgets",  "fwrite", "fclose", "popen",
                                   "pclose", "open",   "lseek",  "read",   "socket",
                                   "ioctl",  "malloc", "mkdir",  "system", "system2"};
constexpr const char* kInterruptible[] = {"fopen", "fgets", "fwrite", "fclose", "open",
                                          "read",  "ioctl", "sleep",  "usleep"};

// All that a caller and the board see of a call.
struct Effect {
    int result;
    std::vector<char> output;
    Lines journal;
    Lines inputs;
    std::string driver_file;

    bool operator==(const Effect&) const = default;
};

class FaultDeathTest : public harness::SwitchBoard {
protected:
    FaultDeathTest() {
        write("/proc/mtd",
              "dev: size erasesize name\nmtd2: 00000040 00020000 \"Config\"\n"
              "mtd3: 00009000 00020000 \"Factory\"\n");
        write("/dev/mtd2", std::string(0x40, 'c'));
        write("/dev/mtd3", std::string(0x9000, '\xFF'));
        write("/etc_ro/wlan/MT7615_EEPROM.bin", std::string(0x9000, '\x22'));
        write("/lib/firmware/other", "");
        on_command = [this](const std::string& command) { return run_tool(command); };
        on_ioctl[0x8BE1] = answer_object;
        on_ioctl[0x8BED] = answer_survey;
        table.rows = {
            {4, 4, 0xFF000010}
        };
        table.end_with_last = true;
        journal_registers = journal_sockets = false;
    }

    // The board anew, as far as calls change it.
    void prepare() {
        host() = board::factory_state();
        host().port_settings[1] = {"off", "", ""};
        host().mac_filters[0] = {2, {board::filter_entry("00:11:22:33:44:55")}};
        host().easymesh = host().sniff_port = host().iptv_config = 1;
        host().radios[0].client.ssid = "upstream";
        for (const char* directory : {"/tmp", "/var/run"}) remove(directory);
        for (const char* ifname : {"ra0", "rai0", "apcli0"}) board::set_interface_up(ifname, true);
        for (const char* key : {"wps_status.ra0", "wps_status.rai0"})
            istatus_set_value_direct(key, "3");
        write("/tmp/other", "");
        write("/var/run/other", "");
        write(harness::kPinPath, "one\ntwo\n62:0 0 0 0 0 0 0 0 0\n63:0 0 0 0 0 0 0 0 0\n");
        for (const char* path : harness::kProfilePath) write(path, "Default\n");
        std::ranges::fill(output_, '#');
        clear_journal();
        fail_no_more();
    }

    // How often a call that goes well uses each function of the system.
    template <size_t kCount>
    std::map<std::string, int> uses(const Call& call, const char* const (&functions)[kCount]) {
        prepare();
        for (const char* function : functions) fail_nth(function, INT_MAX);
        call.run(output_.data());
        std::map<std::string, int> counts;
        for (const char* function : functions) counts[function] = INT_MAX - failures_left(function);
        drain();
        return counts;
    }

    // With the nth call of the function interrupted, if there is such a one.
    Effect effect(const Call& call, const char* function = "none", int n = 0) {
        prepare();
        fail_nth(function, n, EINTR);
        const int result = call.run(output_.data());
        EXPECT_EQ(0, failures_left(function)) << "not reached";
        expect_all_given_back();
        const Effect all = {result, output_, journal(), inputs(), read("/lib/firmware/radio0.bin")};
        drain();
        return all;
    }

    void expect_stands(const Call& call, const std::string& function, int n) {
        prepare();
        fail_nth(function, n);
        if (call.ends && (function == "socket" || function == "ioctl")) {
            EXPECT_EXIT(call.run(output_.data()), testing::ExitedWithCode(0), "socket: |ioctl: ");
            return;
        }
        const bool failed = call.run(output_.data()) == call.failure;
        EXPECT_EQ(0, failures_left(function)) << "not reached";
        EXPECT_TRUE(!failed || std::ranges::all_of(output_, [](char c) { return c == '#'; }))
            << "output touched";
        drain();
        expect_all_given_back();
    }

    void drain() {
        for (const std::string& line : journal()) EXPECT_FALSE(line.starts_with("error:")) << line;
        out();
        err();
        inputs();
        fail_no_more();
    }

private:
    // What the shell would put into the file that a command names.
    harness::Answer run_tool(const std::string& command) {
        const size_t at = command.find(" > /");
        if (at == command.npos) return "value=0x4\n";
        const bool scans = command.find("scan_status") != command.npos;
        write(command.substr(at + 3), scans ? "ra0 get_scan_status:0\n" : kDriverText);
        return {};
    }
    static int answer_object(void* record) {
        iw_point& data = static_cast<iwreq*>(record)->u.data;
        if ((data.flags & 0x8000) != 0) return 0;
        std::memcpy(data.pointer, "\2\0\0", 4);  // configured
        data.length = 4;
        return 0;
    }
    static int answer_survey(void* record) {
        iw_point& data = static_cast<iwreq*>(record)->u.data;
        data.length = std::min<uint16_t>(data.length, 64);
        std::memset(data.pointer, '\n', data.length);
        return 0;
    }
    static constexpr const char* kDriverText =
        "V1\n"
        "Ap Client Status : 1 -50\n"
        "MAC                AID BSS PSM WMM MIMOPS  RSSI0 RSSI1 RSSI2 RSSI3 PhMd BW MCS\n"
        "00:11:22:AA:BB:CC  1   0   0   1   3       -50   -51   -52   -53   HTMIX 40M 15\n";
    std::vector<char> output_ = std::vector<char>(80000);
};

TEST(FaultCalls, AreOfEveryExportedFunction) {
    std::ifstream file(harness::test_file("surface/exports.txt"));
    Lines exports(std::istream_iterator<std::string>(file), {});
    std::erase_if(exports, [](const std::string& name) {
        return name == "module_list" || name == "platform_drv";
    });
    Lines called;
    for (const Call& call : kCalls) called.push_back(call.name);
    std::ranges::sort(called);
    EXPECT_EQ(exports, called);
}

TEST_F(FaultDeathTest, EveryFunctionStandsEveryFailure) {
    int points = 0;
    for (const Call& call : kCalls) {
        int of_call = 0;
        for (const auto& [function, count] : uses(call, kFaults)) {
            of_call += count;
            for (int n = 1; n <= count; ++n) {
                SCOPED_TRACE(testing::Message() << call.name << ": " << function << ' ' << n);
                expect_stands(call, function, n);
            }
        }
        RecordProperty(call.name, of_call);
        points += of_call;
    }
    prepare();
    std::cout << std::size(kCalls) << " functions, " << points << " failures\n";
    EXPECT_LE(1500, points);
}

TEST_F(FaultDeathTest, EveryFunctionIsWholeAfterEverySignal) {
    int points = 0;
    for (const Call& call : kCalls) {
        const Effect undisturbed = effect(call);
        for (const auto& [function, count] : uses(call, kInterruptible)) {
            points += count;
            for (int n = 1; n <= count; ++n)
                EXPECT_TRUE(undisturbed == effect(call, function.c_str(), n))
                    << call.name << ": " << function << ' ' << n;
        }
    }
    prepare();
    std::cout << std::size(kCalls) << " functions, " << points << " interruptions\n";
    EXPECT_LE(1200, points);
}

}  // namespace
