// Link, counters and settings of single ports, the registers that they stand in.
#include <array>
#include <sstream>
#include <tuple>

#include "src/switch/phy.h"
#include "tests/switch/switch_board.h"

namespace {

using harness::Lines;

constexpr int kWan = 0x10001;
constexpr int kNoSuchPort = 9;

class Ports : public harness::SwitchBoard {
protected:
    static std::string phy_write(int port, int reg, int value) {
        return "$2 switch phy cl22 w " + std::to_string(port) + ' ' + std::to_string(reg) + ' ' +
               std::to_string(value);
    }
    static Lines mac_change(const std::string& offset, const std::string& value) {
        return {"socket", "reg " + offset, "close", "socket", "reg " + offset + ' ' + value,
                "close"};
    }
};

TEST_F(Ports, LinkIsReadFromThePhy) {
    // Status after status; gigabit, partner and own abilities; the state; the registers read.
    for (const char* text :
         {"04 3800 0 0 On 1G Full 1 1 10", "404 3400 0 0 On 1G Half 1 1 1 10",
          "40 0 0 0 Off -- -- 1 1 1", "4 1800 1E0 1E0 On 100 Full 1 1 10 5 4",
          "4 3000 1E0 E0 On 100 Half 1 1 10 5 4", "4 C00 60 1E0 On 10 Full 1 1 10 5 4",
          "4 0 180 60 On 10 Half 1 1 10 5 4"}) {
        SCOPED_TRACE(text);
        std::istringstream row(text);
        std::string status, mode, speed, duplex;
        int gigabit, partner, own;
        row >> status >> std::hex >> gigabit >> partner >> own >> mode >> speed >> duplex;
        phys.clear();
        for (const char digit : status) phys[phy_read(2, 1)].push_back(digit - '0');
        phys[phy_read(2, 10)] = {gigabit};
        phys[phy_read(2, 5)] = {partner};
        phys[phy_read(2, 4)] = {own};
        Lines reads;
        for (int reg; row >> std::dec >> reg;) reads.push_back(phy_read(2, reg));
        clear_journal();
        port_setting state = {};
        EXPECT_EQ(0, get_link_status(3, &state));
        EXPECT_EQ((Lines{mode, speed, duplex}), (Lines{state.mode, state.speed, state.duplex}));
        EXPECT_EQ(under_lock(reads), journal());
    }
}

TEST_F(Ports, CountersAreReadInOrderAndBytesOfOthersStay) {
    Lines expected = {"socket"};
    uint32_t value = 0xF0000001;
    for (const uint32_t offset : {0x68U, 0x6CU, 0x70U, 0x78U, 0xB4U, 0xACU, 0xA8U, 0x08U, 0x0CU,
                                  0x10U, 0x14U, 0x4CU, 0x48U}) {
        registers[0x4400 + offset] = value++;
        expected.push_back("reg " + harness::hexadecimal(0x4400 + offset));
    }
    expected.push_back("close");
    constexpr uint64_t kStep = 0xF0000000;
    constexpr uint64_t kUntouched = 0x2323232323232323;
    std::array<uint64_t, 18> record;
    record.fill(kUntouched);
    EXPECT_EQ(0, get_eport_stat(kWan, reinterpret_cast<port_counters*>(record.data())));
    EXPECT_EQ(
        (std::array<uint64_t, 18>{3 * kStep + 6, (kStep + 6) << 32 | (kStep + 7), kStep + 3,
                                  kStep + 2, 0, kStep + 5, kStep + 4, 0, kUntouched, 3 * kStep + 27,
                                  (kStep + 12) << 32 | (kStep + 13), kStep + 10, kStep + 9,
                                  kStep + 11, kUntouched, kUntouched, kUntouched, kUntouched}),
        record);
    EXPECT_EQ(under_lock(expected), journal());
}

TEST_F(Ports, CountersAndAddressesAreClearedByTheTool) {
    EXPECT_EQ(0, clear_port_statistics() + ethswitch_clear_mactable());
    EXPECT_EQ(
        under_lock({"$ switch esw_cnt clear", "unlock switch", "lock switch", "$ switch clear"}),
        journal());
}

TEST_F(Ports, OnAndOffChangeOneBitOfTheMacControl) {
    for (const auto& [mode, before, after] : {
             std::tuple("off", 0x5E33Bu, "5e33b"),
             {"off", 0x563B, "d63b"},
             {"on",  0xD63B, "563b"}
    }) {
        port_setting setting = {"", "1000", "full"};
        std::strcpy(setting.mode, mode);
        clear_journal();
        registers[0x3200] = before;
        EXPECT_EQ(0, set_port_config(3, &setting));
        EXPECT_EQ(under_lock(mac_change("3200", after)), journal());
    }
}

// What else stands in the registers stays, and what was advertised before does not matter.
TEST_F(Ports, AutoAdvertisesEverythingAndAFixedSpeedItselfAlone) {
    // Mode, speed and duplex; the abilities and the gigabit abilities that they come to.
    for (const std::string text :
         {"auto 10 half 1E0 300", "manual 100 full 1E0 0", "manual 100 half E0 0",
          "manual 10 full 60 0", "manual 10 half 20 0", "manual 1000 full 0 300",
          "manual 1000 half 0 100", "manual 1000 Full 0 0", "- - - 0 0"})
        for (const int before : {0, 0x0300}) {
            SCOPED_TRACE(text);
            port_setting setting = {};
            int abilities, gigabit;
            std::istringstream(text) >> setting.mode >> setting.speed >> setting.duplex >>
                std::hex >> abilities >> gigabit;
            clear_journal();
            registers[0x3400] = 0x8001;
            phys[phy_read(4, 4)] = {before == 0 ? 0xDE11 : 0xDFF1};
            phys[phy_read(4, 9)] = {0xFC00 | before};
            phys[phy_read(4, 0)] = {0x1000};
            EXPECT_EQ(0, set_port_config(kWan, &setting));
            Lines expected = text.starts_with("auto") ? mac_change("3400", "1") : Lines{};
            expected.insert(expected.end(), {phy_read(4, 4), phy_write(4, 4, 0xDE11 | abilities),
                                             phy_read(4, 9), phy_write(4, 9, 0xFC00 | gigabit),
                                             phy_read(4, 0), phy_write(4, 0, 0x1200)});
            EXPECT_EQ(under_lock(expected), journal());
        }
}

TEST_F(Ports, StoredSettingsAreAppliedPortByPort) {
    host().port_settings = {
        {2,    {"off", "", ""}    },
        {3,    {"loopoff", "", ""}},
        {kWan, {"loop", "", ""}   },
        {7,    {"off", "", ""}    }
    };
    EXPECT_EQ(0, init_portconfig());
    Lines expected = under_lock(mac_change("3100", "8000"));
    expected.insert(expected.end(), {"lock switch", "out Not implemnted..loopoff", "unlock switch",
                                     "lock switch", "out Not implemnted..loop", "unlock switch"});
    EXPECT_EQ(expected, journal());
}

TEST_F(Ports, LoopModesPrintTheirLineForEveryIndex) {
    for (const int port : {1, kWan, kNoSuchPort, 0, -1})
        for (const std::string mode : {"loop", "loopoff"}) {
            port_setting setting = {};
            std::strcpy(setting.mode, mode.c_str());
            clear_journal();
            EXPECT_EQ(0, set_port_config(port, &setting));
            EXPECT_EQ(under_lock({"out Not implemnted.." + mode}), journal());
        }
}

TEST_F(Ports, APortWithoutASwitchPortIsLeftAlone) {
    port_setting state = {"#", "#", "#"};
    port_counters counters;
    std::memset(&counters, '#', sizeof counters);
    for (const int result : {get_link_status(kNoSuchPort, &state), get_link_status(1, nullptr),
                             set_port_config(kNoSuchPort, &state), set_port_config(1, nullptr),
                             get_eport_stat(kNoSuchPort, &counters), get_eport_stat(1, nullptr)})
        EXPECT_EQ(-1, result);
    EXPECT_STREQ("#", state.mode);
    EXPECT_EQ(0x2323232323232323u, counters.rx_packets);
    EXPECT_EQ(Lines{}, commands());
}

class Registers : public harness::SwitchBoard {};
using RegistersDeathTest = Registers;

TEST_F(Registers, AreReadAndWrittenBetweenInitAndFini) {
    registers[0x3100] = 0x56300;
    uint32_t value = 0;
    EXPECT_LE(0, switch_ioctl_init());
    EXPECT_EQ(0, reg_read(0x3100, &value));
    EXPECT_EQ(0x56300u, value);
    EXPECT_EQ(0, reg_write(0x80, 0x8004));
    EXPECT_EQ(0, reg_write_ioctl(0x3100, 0xFFFFFFFF));
    EXPECT_EQ(0, reg_read_ioctl(0x3100, &value));
    EXPECT_EQ(0xFFFFFFFF, value);
    EXPECT_EQ(0, switch_ioctl_fini());
    EXPECT_EQ(
        (Lines{"socket", "reg 3100", "reg 80 8004", "reg 3100 ffffffff", "reg 3100", "close"}),
        journal());
}

TEST_F(RegistersDeathTest, ARefusedRegisterEndsTheProcess) {
    uint32_t value = 0;
    const testing::ExitedWithCode ended(0);
    EXPECT_EXIT((fail_nth("socket", 1), switch_ioctl_init()), ended, "socket: Input/output error");
    fail_no_more();
    switch_ioctl_init();
    const auto refused = [this] { fail_nth("ioctl", 1); };
    EXPECT_EXIT((refused(), reg_read(0x3100, &value)), ended, "ioctl: Input/output error");
    EXPECT_EXIT((refused(), reg_write(0x3100, 0)), ended, "ioctl: Input/output error");
    {
        const harness::LibraryHook closing(
            "close", +[](int) { return std::fputs("closed, ", stderr); });
        const harness::LibraryHook ending(
            "exit", +[](int status) { std::fputs("ended\n", stderr), exit(status); });
        EXPECT_EXIT((refused(), reg_write(0x3100, 0)), ended, "error\nclosed, ended\n$");
    }
    switch_ioctl_fini();
}

TEST(PhyAnswer, IsTheHexadecimalNumberRightAfterTheLastEquals) {
    using platform::parse_phy_answer;
    EXPECT_EQ(0x796d, parse_phy_answer("value=0x796d\n"));
    EXPECT_EQ(0xABCDEF, parse_phy_answer("=0xABCDEF"));
    EXPECT_EQ(0x12, parse_phy_answer("a=b=0x12 rest"));
    for (const char* line : {"value= 0x12", "value=12", "value="})
        EXPECT_EQ(0, parse_phy_answer(line)) << line;
    for (const char* line : {"value 0x12", ""}) EXPECT_EQ(-1, parse_phy_answer(line)) << line;
}

}  // namespace
