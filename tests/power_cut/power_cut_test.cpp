// Power fails at each write, rename and command: what the next start finds, and how it ends.
#include "tests/power_cut/cuts.h"

#include <cstdio>
#include <regex>

#include "board/model/flash.h"
#include "board/model/interfaces.h"
#include "board/store/store.h"
#include "platform/platform.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/library_hook.h"
#include "tests/support/rows.h"

namespace {

using power_cut::boot_variable;
using power_cut::run_apart;

// Under AddressSanitizer, and under an emulator of the board's processor, a process takes a tenth
// of a second to start.
#if defined(__aarch64__)
constexpr bool kSlow = true;
#elif defined(__has_feature)
constexpr bool kSlow = __has_feature(address_sanitizer);
#else
constexpr bool kSlow = false;
#endif

// What a tree says, piece by piece: a profile's key, a boot variable, some bytes of a partition.
using Facts = std::map<std::string, std::string>;

enum Outcome { kOld, kMixed, kTorn, kNew };

std::string_view find_fact(const Facts& facts, const std::string& key) {
    const auto fact = facts.find(key);
    return fact == facts.end() ? std::string_view() : fact->second;
}

// Torn: a piece is neither what it was nor what it was to be.
Outcome judge(const Facts& before, const Facts& now, const Facts& whole) {
    if (now == whole) return kNew;
    if (now == before) return kOld;
    for (const Facts* facts : {&before, &now, &whole})
        for (const auto& [key, value] : *facts) {
            const std::string_view found = find_fact(now, key);
            if (found != find_fact(before, key) && found != find_fact(whole, key)) return kTorn;
        }
    return kMixed;
}

// How often each was found, in the order that they are told in.
using Count = std::map<Outcome, int>;

std::string words(const Count& count) {
    const char* const kWords[] = {" old", " mixed", " torn", " new"};
    std::string text;
    for (const auto& [outcome, times] : count)
        text += kWords[outcome] + (' ' + std::to_string(times));
    return text;
}

class PowerCut : public harness::SampleRadios {
protected:
    PowerCut() {
        board::BootEnvironment variables;
        variables.set("pad", std::string(3000, 'p'));
        for (const auto& [name, value] :
             harness::rows<std::string, std::string>("ethaddr 00:9f:33:10:20:30  diag 0  ftm off"))
            variables.set(name, value);
        write("/proc/mtd",
              "dev: size erasesize name\nmtd1: 00001000 00001000 \"Config\"\n"
              "mtd2: 00010000 00008000 \"Factory\"\n");
        write("/dev/mtd1", variables.image());
        write("/dev/mtd2", calibration_);
        write("/lib/firmware/radio0.bin", calibration_);
        write("/etc_ro/wlan/MT7615_EEPROM.bin", image_);
        on_command = power_cut::run_tool;
    }

    static Facts read_facts() {
        Facts facts;
        for (const char* path : harness::kProfilePath)
            for (const std::string& line : board::read_lines(path))
                facts[path + line.substr(0, line.find('='))] += line;
        for (const char* name : {"ethaddr", "pad", "diag", "ftm", "a", "b"})
            facts[name] = boot_variable(name);
        for (const std::string path : {"/dev/mtd1", "/dev/mtd2", "/lib/firmware/radio0.bin"}) {
            // An environment that is whole counts by its variables.
            if (path == "/dev/mtd1" && !boot_variable("pad").empty()) continue;
            const std::string content = board::read_text(path).value_or("");
            facts[path + " size"] = std::to_string(content.size());
            for (size_t at = 0; at < content.size(); at += 256)
                facts[path + std::to_string(at)] = content.substr(at, 256);
        }
        return facts;
    }

    // The outcomes: what the next start finds -> what it makes of that -> where that is not new,
    // what comes of the operation and a start more.
    void expect_cuts(const char* name, const std::function<void()>& operation,
                     const std::string& expected, void (*start)()) {
        const std::string old = board::root() + "/old";
        power_cut::copy_files(board::root(), old);
        const auto started = [&] {
            power_on();
            run_apart(start, 0);
            return read_facts();
        };
        const Facts before = read_facts();
        const Facts before_started = started();
        power_cut::copy_files(old, board::root());
        const int points = run_apart(operation, 0);
        const Facts whole = read_facts();
        const Facts whole_started = started();

        Count found, left, repeated;
        for (int n = 1; n <= points; n += kSlow && n > 16 ? 16 : 1) {
            SCOPED_TRACE(testing::Message() << name << ", cut at " << n);
            power_cut::copy_files(old, board::root());
            run_apart(operation, n);
            ++found[judge(before, read_facts(), whole)];
            const Outcome start_left = judge(before_started, started(), whole_started);
            ++left[start_left];
            if (start_left == kNew) continue;
            run_apart(operation, 0);
            ++repeated[judge(before_started, started(), whole_started)];
        }
        const auto outcomes = words(found) + " ->" + words(left) + " ->" + words(repeated);
        std::printf("%-31s %4d points:%s\n", name, points, outcomes.c_str());
        EXPECT_EQ(expected, std::regex_replace(outcomes, std::regex(" \\d+"), "")) << name;
        power_cut::copy_files(old, board::root());
    }

    const std::string calibration_ = std::string(0x10000, '\x15');
    const std::string image_ = std::string(0x10000, '\x22');

private:
    // What is not on flash is gone.
    void power_on() {
        for (const char* directory : {"/sys", "/tmp", "/var"}) remove(directory);
        for (const char* directory : {"/tmp", "/var/run"}) board::make_directories(directory);
        board::create_interfaces(host());
    }

    const harness::LibraryHook fwrite_{"fwrite", power_cut::fwrite};
    const harness::LibraryHook popen_{"popen", power_cut::popen};
    const harness::LibraryHook pclose_{"pclose", power_cut::pclose};
};

// A profile is never torn, and the next start makes it anew from the host's records.
TEST_F(PowerCut, OfAProfile) {
    const auto start = [] { EXPECT_EQ(0, platform_init_wireless()); };
    const auto set_one = [] { platform_set_wireless(nullptr, "rai0"); };
    const auto set_policy = [] { wireless_macauth_set_policy(0, 2); };
    const auto set_list = [] { wireless_apply_macauth(0x10000); };
    expect_cuts("platform_init_wireless", start, " old mixed new -> new ->", start);
    expect_cuts("platform_set_wireless", set_one, " old mixed new -> new ->", start);
    expect_cuts("mtk_profile_update_for_easymesh", mtk_profile_update_for_easymesh,
                " old mixed -> new ->", start);
    expect_cuts("wireless_macauth_set_policy", set_policy, " old -> new ->", start);
    expect_cuts("wireless_apply_macauth", set_list, " old -> new ->", start);
}

// What the start makes of the variables that it finds.
void read_boot_variables() {
    char text[18] = {};
    EXPECT_EQ(boot_variable("diag") == "0" ? 0 : 1, check_diag_flag());
    EXPECT_EQ(boot_variable("ftm") == "on" ? 1 : 0, check_ated_flag());
    EXPECT_EQ(1, get_hwaddr_flash(nullptr, text));
    EXPECT_STREQ(boot_variable("ethaddr").empty() ? "00:00:00:00:00:00" : "00:9F:33:10:20:30",
                 text);
}

// The environment is erased and written where it lies: all of it can be lost.
TEST_F(PowerCut, OfABootVariable) {
    const auto set_pairs = [] { set_bootconfig("set", "a=1&b=2"); };
    const auto start = read_boot_variables;
    expect_cuts("write_diag_flag", write_diag_flag, " old torn -> old torn -> torn new", start);
    expect_cuts("set_ated_flag", set_ated_flag, " old torn -> old torn -> torn new", start);
    expect_cuts("set_bootconfig", set_pairs, " old mixed torn -> old mixed torn -> torn new",
                start);
}

void set_address() {
    set_hwaddr_flash("00:9f:33:aa:bb:cc");
    const std::string data = board::read_text("/dev/mtd2").value();
    EXPECT_EQ("00:9f:33:aa:bb:cc", boot_variable("ethaddr"));
    EXPECT_EQ("\x9f\x33\xaa\xbb\xcc", data.substr(5, 5));
    EXPECT_EQ("\x9f\x33\xaa\xbb\xce", data.substr(0x8005, 5));
}

// So are the calibration data with the address in them. Done once more, it arrives everywhere; the
// default image then stands where calibration data were lost.
TEST_F(PowerCut, OfANewAddress) {
    expect_cuts("set_hwaddr_flash", set_address, " old mixed torn -> old mixed torn -> torn new",
                [] { EXPECT_EQ(0, init_mt7622()); });
}

void start_platform() {
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ(0, check_eeprom());
    EXPECT_EQ(board::read_text("/dev/mtd2"), board::read_text("/lib/firmware/radio0.bin"));
}

// The next start sees data whose first bytes are erased, not data that end early.
TEST_F(PowerCut, OfCalibrationData) {
    const auto install = [] { EXPECT_EQ(0, install_eeprom(nullptr)); };
    expect_cuts("install_eeprom", install, " old mixed torn -> old mixed torn new -> new",
                start_platform);
    expect_cuts("extract_eeprom", extract_eeprom, " torn -> new ->", start_platform);
    write("/dev/mtd2", std::string(0x10000, '\xFF'));
    expect_cuts("init_mt7622", init_mt7622, " old mixed torn new -> torn new -> torn",
                start_platform);
    expect_cuts("install_eeprom, erased", install, " old mixed -> torn new -> new", start_platform);
}

TEST_F(PowerCut, OfAPartition) {
    const auto store = [] { write_config(std::string(0x1000, 'n').c_str(), 0x1000); };
    expect_cuts("write_config", store, " old torn -> old torn -> new", [] {});
}

}  // namespace
