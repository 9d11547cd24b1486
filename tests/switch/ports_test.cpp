// Link, counters and settings of single ports.
#include <array>

#include "switch/switch_board.h"

namespace {

using harness::Lines;

constexpr int kWan = 0x10001;
constexpr int kNoSuchPort = 9;

class Ports : public harness::SwitchBoard {
protected:
    // Readings of PHY registers, in order.
    static Lines reads(int port, std::initializer_list<int> registers) {
        Lines lines;
        for (const int reg : registers) lines.push_back(phy_read(port, reg));
        return under_lock(lines);
    }
    static port_setting setting(const char* mode, const char* speed, const char* duplex) {
        port_setting made = {};
        std::strcpy(made.mode, mode);
        std::strcpy(made.speed, speed);
        std::strcpy(made.duplex, duplex);
        return made;
    }
    static Lines mac_change(const std::string& offset, const std::string& value) {
        return {"socket", "reg " + offset, "close", "socket", "reg " + offset + ' ' + value,
                "close"};
    }
};

TEST_F(Ports, LinkIsReadFromThePhy) {
    struct Row {
        std::vector<int> status;
        int gigabit, partner, own;
        const char *mode, *speed, *duplex;
        std::initializer_list<int> read;
    };
    for (const Row& row : {
             Row{{0, 4},    0x3800, 0,      0,      "On",  "1G",  "Full", {1, 1, 10}      },
             {{4, 0, 4}, 0x3400, 0,      0,      "On",  "1G",  "Half", {1, 1, 1, 10}   },
             {{4, 0},    0,      0,      0,      "Off", "--",  "--",   {1, 1, 1}       },
             {{4},       0x1800, 0x01E0, 0x01E0, "On",  "100", "Full", {1, 1, 10, 5, 4}},
             {{4},       0x3000, 0x01E0, 0x00E0, "On",  "100", "Half", {1, 1, 10, 5, 4}},
             {{4},       0x0C00, 0x0060, 0x01E0, "On",  "10",  "Full", {1, 1, 10, 5, 4}},
             {{4},       0,      0x0020, 0x01E0, "On",  "10",  "Half", {1, 1, 10, 5, 4}},
             {{4},       0,      0x0180, 0x0060, "On",  "10",  "Half", {1, 1, 10, 5, 4}},
    }) {
        clear_journal();
        phy(2, 1, row.status);
        phy(2, 10, {row.gigabit});
        phy(2, 5, {row.partner});
        phy(2, 4, {row.own});
        port_setting state = {};
        EXPECT_EQ(0, get_link_status(3, &state));
        EXPECT_STREQ(row.mode, state.mode);
        EXPECT_STREQ(row.speed, state.speed);
        EXPECT_STREQ(row.duplex, state.duplex);
        EXPECT_EQ(reads(2, row.read), journal());
    }
}

TEST_F(Ports, LinkOfTheWanPortIsThatOfItsSwitchPort) {
    port_setting state = {};
    phy(4, 1, {0});
    EXPECT_EQ(0, get_link_status(kWan, &state));
    EXPECT_STREQ("Off", state.mode);
    EXPECT_EQ(reads(4, {1, 1, 1}), journal());
}

TEST_F(Ports, CountersAreReadInOrderAndBytesOfOthersStay) {
    constexpr uint32_t kOffsets[] = {0x68, 0x6C, 0x70, 0x78, 0xB4, 0xAC, 0xA8,
                                     0x08, 0x0C, 0x10, 0x14, 0x4C, 0x48};
    Lines expected = {"socket"};
    uint32_t value = 0xF0000001;
    for (const uint32_t offset : kOffsets) {
        registers[0x4400 + offset] = value++;
        expected.push_back("reg " + harness::hexadecimal(0x4400 + offset));
    }
    expected.push_back("close");
    std::array<uint64_t, 18> record;
    record.fill(0x2323232323232323);
    EXPECT_EQ(0, get_eport_stat(kWan, reinterpret_cast<port_counters*>(record.data())));
    constexpr uint64_t kBase = 0xF0000000;
    constexpr uint64_t kUntouched = 0x2323232323232323;
    EXPECT_EQ(
        (std::array<uint64_t, 18>{3 * kBase + 6, (kBase + 6) << 32 | (kBase + 7), kBase + 3,
                                  kBase + 2, 0, kBase + 5, kBase + 4, 0, kUntouched, 3 * kBase + 27,
                                  (kBase + 12) << 32 | (kBase + 13), kBase + 10, kBase + 9,
                                  kBase + 11, kUntouched, kUntouched, kUntouched, kUntouched}),
        record);
    EXPECT_EQ(under_lock(expected), journal());
}

TEST_F(Ports, CountersAreClearedByTheTool) {
    EXPECT_EQ(0, clear_port_statistics());
    EXPECT_EQ(under_lock({"$ switch esw_cnt clear"}), journal());
}

TEST_F(Ports, OnAndOffChangeOneBitOfTheMacControl) {
    registers[0x3200] = 0x5E33B;
    const port_setting off = setting("off", "1000", "full");
    EXPECT_EQ(0, set_port_config(3, &off));
    EXPECT_EQ(under_lock(mac_change("3200", "5e33b")), journal());
    registers[0x3200] = 0x563B;
    clear_journal();
    EXPECT_EQ(0, set_port_config(3, &off));
    EXPECT_EQ(under_lock(mac_change("3200", "d63b")), journal());
    clear_journal();
    const port_setting on = setting("on", "", "");
    EXPECT_EQ(0, set_port_config(3, &on));
    EXPECT_EQ(under_lock(mac_change("3200", "563b")), journal());
}

TEST_F(Ports, LoopsAreNotImplemented) {
    for (const char* mode : {"loop", "loopoff"}) {
        clear_journal();
        const port_setting loop = setting(mode, "", "");
        EXPECT_EQ(0, set_port_config(1, &loop));
        EXPECT_EQ("Not implemnted.." + std::string(mode) + "\n", out());
        EXPECT_EQ(under_lock({}), journal());
    }
}

TEST_F(Ports, AutoAdvertisesEverything) {
    registers[0x3000] = 0x8001;
    phy(0, 4, {0x0401});
    phy(0, 9, {0x1C00});
    phy(0, 0, {0x1140});
    const port_setting automatic = setting("auto", "10", "half");
    EXPECT_EQ(0, set_port_config(1, &automatic));
    Lines expected = mac_change("3000", "1");
    for (const auto& [reg, value] : {
             std::pair(4, 0x05E1), {9, 0x1F00},
               {0, 0x1340}
    }) {
        expected.push_back(phy_read(0, reg));
        expected.push_back(phy_write(0, reg, value));
    }
    EXPECT_EQ(under_lock(expected), journal());
}

TEST_F(Ports, AFixedSpeedAdvertisesItAlone) {
    struct Row {
        const char *speed, *duplex;
        int abilities, gigabit;
    };
    for (const Row& row : {
             Row{"100",  "full", 0x01E0, 0     },
             {"100",  "half", 0x00E0, 0     },
             {"10",   "full", 0x0060, 0     },
             {"10",   "half", 0x0020, 0     },
             {"1000", "full", 0,      0x0300},
             {"1000", "half", 0,      0x0100},
             {"1000", "Full", 0,      0     },
             {"2500", "full", 0,      0     },
             {"",     "",     0,      0     },
    }) {
        clear_journal();
        phy(4, 4, {0xDFF1});
        phy(4, 9, {0xFF00});
        phy(4, 0, {0x1000});
        const port_setting fixed = setting("manual", row.speed, row.duplex);
        EXPECT_EQ(0, set_port_config(kWan, &fixed));
        EXPECT_EQ(under_lock({phy_read(4, 4), phy_write(4, 4, 0xDE11 | row.abilities),
                              phy_read(4, 9), phy_write(4, 9, 0xFC00 | row.gigabit), phy_read(4, 0),
                              phy_write(4, 0, 0x1200)}),
                  journal());
    }
}

TEST_F(Ports, StoredSettingsAreAppliedPortByPort) {
    host().port_settings = {
        {2,    {"off", "", ""} },
        {kWan, {"loop", "", ""}},
        {7,    {"off", "", ""} }
    };
    EXPECT_EQ(0, init_portconfig());
    Lines expected = under_lock(mac_change("3100", "8000"));
    expected.insert(expected.end(), {"lock switch", "unlock switch"});
    EXPECT_EQ(expected, journal());
    EXPECT_EQ("Not implemnted..loop\n", out());
}

TEST_F(Ports, APortWithoutASwitchPortIsLeftAlone) {
    port_setting state = setting("#", "#", "#");
    port_counters counters;
    std::memset(&counters, '#', sizeof counters);
    EXPECT_EQ(-1, get_link_status(kNoSuchPort, &state));
    EXPECT_EQ(-1, set_port_config(kNoSuchPort, &state));
    EXPECT_EQ(-1, get_eport_stat(kNoSuchPort, &counters));
    EXPECT_EQ(-1, get_link_status(1, nullptr));
    EXPECT_EQ(-1, set_port_config(1, nullptr));
    EXPECT_EQ(-1, get_eport_stat(1, nullptr));
    EXPECT_STREQ("#", state.mode);
    EXPECT_EQ(0x2323232323232323u, counters.rx_packets);
    EXPECT_EQ(Lines{}, commands());
}

}  // namespace
