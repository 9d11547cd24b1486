// The example call of every exported function: what it does, and what it makes of missing
// arguments, of each call to the system that fails, and of each that a signal interrupts.
#include <dlfcn.h>
#include <linux/sockios.h>
#include <linux/wireless.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iostream>
#include <iterator>
#include <sstream>

#include "board/host/state.h"
#include "board/model/interfaces.h"
#include "border/frame.h"
#include "src/host/host.h"
#include "tests/support/board.h"
#include "tests/switch/switch_board.h"

namespace {

using border::Frame;
using border::Function;
using border::Socket;
using harness::Lines;

constexpr char kFill = '#';

constexpr const char* kFaults[] = {"fopen",  "fgets",  "fwrite", "fclose", "popen",
                                   "pclose", "open",   "lseek",  "read",   "socket",
                                   "ioctl",  "malloc", "mkdir",  "system", "system2"};
constexpr const char* kInterruptible[] = {"fopen", "fgets", "fwrite", "fclose", "open",
                                          "read",  "ioctl", "sleep",  "usleep"};

// All that a caller and the board see of a call.
struct Effect {
    int64_t result;
    Lines outputs;
    Lines journal;
    Lines inputs;
    std::string driver_file;

    bool operator==(const Effect&) const = default;
};

class SweepDeathTest : public harness::SwitchBoard {
protected:
    SweepDeathTest() {
        write("/proc/mtd",
              "dev: size erasesize name\nmtd2: 00000040 00020000 \"Config\"\n"
              "mtd3: 00009000 00020000 \"Factory\"\n");
        write("/dev/mtd2", std::string(0x40, 'c'));
        write("/dev/mtd3", std::string(0x9000, '\x11'));
        write("/etc_ro/wlan/MT7615_EEPROM.bin", std::string(0x9000, '\x22'));
        write("/lib/firmware/other", "");
        on_command = [this](const std::string& command) { return run_tool(command); };
        on_ioctl[SIOCGIFINDEX] = [](void*) { return 0; };
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
        host().radios[0].client = {"upstream", "00:11:22:33:44:55", {}, 866};
        host().led_silence.mode = 1;
        for (const char* directory : {"/tmp", "/var/run"}) remove(directory);
        for (const char* ifname : {"ra0", "rai0", "apcli0"}) board::set_interface_up(ifname, true);
        for (const char* key : {"wps_status.ra0", "wps_status.rai0"})
            istatus_set_value_direct(key, "3");
        write("/tmp/other", "");
        write("/var/run/other", "");
        write(harness::kPinPath, kPins);
        for (const char* path : harness::kProfilePath) write(path, "Default\n");
        clear_journal();
        fail_no_more();
    }

    struct Done {
        int64_t result;
        Lines outputs;          // the buffers of what the function fills
        bool untouched = true;  // all of them
    };

    // Calls the function with its example, or with nothing: null for whatever can be null and 0 for
    // every number.
    Done call(const Function& function, bool with_nothing = false) {
        std::istringstream example(function.example);
        Lines words{std::istream_iterator<std::string>(example), {}};
        if (with_nothing) words = nothing_for(function);
        Frame frame(
            function, words, [](const std::string&) { return ""; }, kFill);
        Frame::Words parameters = frame.words();
        const auto run =
            reinterpret_cast<uintptr_t (*)(uintptr_t, uintptr_t, uintptr_t, uintptr_t)>(
                dlsym(RTLD_DEFAULT, function.name));
        if (function.socket == Socket::needed ||
            (function.socket == Socket::closed && !with_nothing))
            switch_ioctl_init();
        const uintptr_t word = run(parameters[0], parameters[1], parameters[2], parameters[3]);
        if (function.socket == Socket::needed || function.socket == Socket::opened)
            switch_ioctl_fini();
        EXPECT_EQ(nullptr, frame.overrun());

        Done done = {result_of(function, word), {}};
        if (function.descriptor && done.result != -1) close(static_cast<int>(done.result));
        for (size_t i = 0; i < function.count; ++i) {
            if (!is_answer(function.parameters[i]) || frame.is_null(i)) continue;
            std::string& output = done.outputs.emplace_back(frame.content(i));
            if (!takes_argument(function.parameters[i]))
                done.untouched &= output.find_first_not_of(kFill) == output.npos;
            if (function.parameters[i].kind != border::Kind::filled_list) continue;
            output.resize(sizeof(uint32_t));  // the count: what follows are addresses
            free_all_list(reinterpret_cast<void*>(parameters[i]), nullptr);
        }
        return done;
    }

    // How often a call that goes well uses each function of the system.
    template <size_t kCount>
    std::map<std::string, int> uses(const Function& function,
                                    const char* const (&of_system)[kCount]) {
        prepare();
        for (const char* name : of_system) fail_nth(name, INT_MAX);
        call(function);
        std::map<std::string, int> counts;
        for (const char* name : of_system) counts[name] = INT_MAX - failures_left(name);
        drain();
        return counts;
    }

    // With the nth call of a function of the system interrupted, if there is such a one.
    Effect effect(const Function& function, const char* of_system = "none", int n = 0) {
        prepare();
        fail_nth(of_system, n, EINTR);
        const Done done = call(function);
        EXPECT_EQ(0, failures_left(of_system)) << "not reached";
        expect_all_given_back();
        const Effect all = {done.result, done.outputs, journal(), inputs(),
                            read("/lib/firmware/radio0.bin")};
        drain();
        return all;
    }

    // A call that fails, or that is given nothing, leaves nothing open, and what it was to fill as
    // it was where its result says so.
    void expect_stands(const Function& function, const std::string& of_system = "none", int n = 0,
                       bool with_nothing = false) {
        prepare();
        if (is_bare_) take_away_leds();
        fail_nth(of_system, n);
        if (function.socket != Socket::unused && (of_system == "socket" || of_system == "ioctl")) {
            EXPECT_EXIT(call(function), testing::ExitedWithCode(0), "socket: |ioctl: ");
            return;
        }
        const Done done = call(function, with_nothing);
        EXPECT_EQ(0, failures_left(of_system)) << "not reached";
        const bool failed = done.result == function.outcome.result;
        if (failed) failed_.insert(function.name);
        EXPECT_TRUE(!failed || done.untouched ||
                    function.outcome.meaning != border::Outcome::untouched)
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

    static inline int asked_ = 0;   // how often the host was asked for a file
    bool is_bare_ = false;          // the board has no pins
    std::set<std::string> failed_;  // the functions whose failing result was seen

private:
    static Lines nothing_for(const Function& function) {
        Lines words;
        for (size_t i = 0; i < function.count; ++i) {
            const border::Parameter& parameter = function.parameters[i];
            if (takes_argument(parameter))
                words.push_back(parameter.kind <= border::Kind::length ? "0" : "-");
            else if (parameter.kind != border::Kind::filled_number)
                words.push_back(std::string(parameter.name) + "=-");
        }
        return words;
    }
    void take_away_leds() {
        hw_info& hw = host().hw;
        for (int32_t* pin :
             {&hw.run_led_gpio, &hw.wl_led[0].gpio, &hw.wl_led[1].gpio, &hw.usb_led_gpio[0]})
            *pin = -1;
    }
    static int64_t result_of(const Function& function, uintptr_t word) {
        switch (function.result) {
            case border::Result::nothing:
                return 0;
            case border::Result::i32:
            case border::Result::u32:
                return static_cast<int32_t>(word);
            default:
                return static_cast<int64_t>(word);
        }
    }

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
        std::memcpy(data.pointer, "\x22\0\0", 4);  // configured
        data.length = 4;
        return 0;
    }
    static int answer_survey(void* record) {
        iw_point& data = static_cast<iwreq*>(record)->u.data;
        const std::string row = "6   net                              00:11:22:aa:bb:cc NONE 80\n";
        data.length =
            static_cast<uint16_t>(row.copy(static_cast<char*>(data.pointer), data.length));
        return 0;
    }
    static constexpr const char* kDriverText =
        "Station table\nV2\n001122aabbcc 0 0 0 1 3 -50 -51 -52 HTMIX -50\naabbccddeeff C 1 2 3 "
        "-50\n"
        "Ap Client Status=1,-50\nDot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount=2,60,15\n";
    static constexpr const char* kPins =
        "one\ntwo\n18:0 0 0 0 0 0 0 0 0\n21:0 0 0 0 0 0 0 0 0\n22:0 0 0 0 0 0 0 0 0\n"
        "23:0 0 0 0 0 0 0 0 0\n62:0 0 0 0 0 0 0 0 0\n63:0 0 0 0 0 0 0 0 0\n";

    static int count_and_ask(const char* path) {
        ++asked_;
        return ::file_exists(path);
    }
    const harness::LibraryHook file_exists_{HOST_HOOK(file_exists, count_and_ask)};
};

// One whose work is missing as a whole would leave nothing behind but a result of 0 or 1.
TEST_F(SweepDeathTest, EveryExampleDoesItsWork) {
    for (const Function& function : border::exports()) {
        SCOPED_TRACE(function.name);
        const auto [meaning, expected] = function.outcome;
        const bool constant = meaning == border::Outcome::always;
        asked_ = 0;
        int used = 0;
        for (const auto& [of_system, count] : uses(function, kFaults))
            used += function.socket == Socket::needed && of_system == "socket" ? 0 : count;
        const Effect left = effect(function);
        prepare();
        const bool untouched = call(function).untouched && left.journal.empty();
        drain();
        const bool works = used + asked_ > 0 || !untouched;
        EXPECT_TRUE(constant ? !works : works || (left.result != 0 && left.result != 1));
        if (meaning != border::Outcome::no_failure) {
            EXPECT_EQ(constant, left.result == expected) << "result " << left.result;
        }
    }
    prepare();
}

// A failure that a row names is one that was seen.
TEST_F(SweepDeathTest, EveryFunctionStandsEveryFailure) {
    int points = 0;
    for (const Function& function : border::exports()) {
        SCOPED_TRACE(function.name);
        for (const auto& [of_system, count] : uses(function, kFaults)) {
            points += count;
            for (int n = 1; n <= count; ++n) {
                SCOPED_TRACE(testing::Message() << of_system << ' ' << n);
                expect_stands(function, of_system, n);
            }
        }
        expect_stands(function, "none", 0, true);
    }
    std::cout << border::exports().size() << " functions, " << points << " failures\n";
    EXPECT_LE(1500, points);

    is_bare_ = true;
    remove("/proc/mtd");
    for (const unsigned long request : {0x8BE1UL, 0x8BEDUL}) on_ioctl.erase(request);
    for (const Function& function : border::exports()) {
        SCOPED_TRACE(function.name);
        expect_stands(function);
        EXPECT_TRUE(function.outcome.meaning < border::Outcome::fails ||
                    failed_.contains(function.name));
    }
    prepare();
}

TEST_F(SweepDeathTest, EveryFunctionIsWholeAfterEverySignal) {
    int points = 0;
    for (const Function& function : border::exports()) {
        const Effect undisturbed = effect(function);
        for (const auto& [of_system, count] : uses(function, kInterruptible)) {
            points += count;
            for (int n = 1; n <= count; ++n)
                EXPECT_TRUE(undisturbed == effect(function, of_system.c_str(), n))
                    << function.name << ": " << of_system << ' ' << n;
        }
    }
    prepare();
    std::cout << border::exports().size() << " functions, " << points << " interruptions\n";
    EXPECT_LE(1200, points);
}

}  // namespace
