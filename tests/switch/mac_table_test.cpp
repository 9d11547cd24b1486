// The walk through the switch's address table, wired stations, deleting.
#include <climits>
#include <tuple>

#include "frame/host.h"
#include "switch/switch_board.h"

namespace {

using harness::Lines;

// The address 00:9F:33:01:02:last, or another first byte.
harness::AddressTable::Row station(uint32_t last, uint32_t port_map, uint32_t age = 0xFF,
                                   uint32_t first = 0) {
    return {first << 24 | 0x009F3301, 0x020000A5 | last << 16, age << 24 | port_map << 4};
}

class MacTable : public harness::SwitchBoard {
protected:
    int walk(int capacity, int mask) {
        return mt753x_get_all_macentry(entries.data(), capacity, mask);
    }
    std::vector<switch_mac_entry> entries = std::vector<switch_mac_entry>(4096);
};

TEST_F(MacTable, EntriesAreReadInOrderWithTheirPauses) {
    table.rows = {station(1, 0x02), station(3, 0x01, 0), station(2, 0x41)};
    table.rows[2].busy = 1;
    table.end_with_last = true;
    std::memset(entries.data(), '#', 4 * sizeof entries[0]);
    EXPECT_EQ(2, walk(4, 0x7F));
    EXPECT_EQ(
        0, std::memcmp(entries.data(),
                       "\x00\x9F\x33\x01\x02\x01\xA5\x02\x00\x9F\x33\x01\x02\x02\xA5\x41###", 19));
    // The aged entry is passed over at once.
    EXPECT_EQ((Lines{"socket", "reg 80 8004", "reg 80", "reg 8c", "reg 84", "reg 88", "reg 80 8005",
                     "usleep 1000", "reg 80", "reg 8c", "reg 80 8005", "reg 80", "usleep 5000",
                     "reg 80", "reg 8c", "reg 84", "reg 88", "close"}),
              journal());
}

TEST_F(MacTable, StopsAtTheCapacityAndWarns) {
    table.rows = {station(1, 1), station(2, 1), station(3, 1)};
    EXPECT_EQ(2, walk(2, 0x7F));
    EXPECT_EQ(0, walk(0, 0x7F));
    journal_registers = false;
    for (const int capacity : {4, 3}) {
        clear_journal();
        EXPECT_EQ(3, ethswitch_get_all_macentry(entries.data(), capacity, 0x7F));
        EXPECT_EQ(capacity == 4 ? "" : "Warning:need more switch entry buffer\n", err());
        EXPECT_EQ(under_lock({"socket", "usleep 1000", "usleep 1000", "usleep 1000", "close"}),
                  journal());
    }
}

TEST_F(MacTable, ABrokenTableDoesNotHoldUsForEver) {
    journal_registers = journal_sockets = false;
    table.never_ends = true;
    const std::tuple<uint32_t, int, int, int, Lines> kRows[] = {
  // Age, polls, mask, stored, pauses.
        {0xFF,            0,          0x7F, 2046,         Lines(2045,  "usleep 1000")},
        {0xFF,               0,                      0,           0, Lines(2045, "usleep 1000")},
        {0xFF, INT_MAX,           0x7F,            0,                 Lines(2000,              "usleep 5000")},
        {0,     0, 0x7F,     0, {}},
    };
    for (const auto& [age, polls, mask, stored, pauses] : kRows) {
        clear_journal();
        table.rows = {station(1, 1, age)};
        table.rows[0].busy = polls;
        EXPECT_EQ(stored, walk(4096, mask));
        EXPECT_EQ(pauses, journal());
    }
}

class WiredStations : public MacTable {
protected:
    WiredStations() {
        journal_registers = journal_sockets = false;
        host().lan_switch_ports = {3, 2, 1, 0};
    }
};

TEST_F(WiredStations, AreListedWithTheirUserPort) {
    table.rows = {station(1, 0x01), station(2, 0x0C), station(3, 0x10),
                  station(4, 0x20), station(5, 0x18), station(6, 0x01, 0xFF, 1)};
    wired_station_list list = {};
    EXPECT_EQ(3, apcp_get_stalist_from_ethswitch(&list));
    std::string listed;
    for (const wired_station* node = list.first; node != nullptr; node = node->next)
        listed += harness::hexadecimal(node->kind) + ':' + harness::hexadecimal(node->mac[5]) +
                  '@' + harness::hexadecimal(node->user_port) + ' ';
    EXPECT_EQ("1:1@4 1:2@2 1:5@1 ", listed);
    EXPECT_EQ(6, apcp_get_stalist_from_ethswitch(&list));
    free_all_list(&list, nullptr);
}

TEST_F(WiredStations, WithoutMemoryThereAreNone) {
    wired_station_list list = {};
    fail_nth("malloc", 1);
    EXPECT_EQ(0, apcp_get_stalist_from_ethswitch(&list));
    fail_nth("malloc", 1);
    EXPECT_EQ(-1, ethswitch_get_port_num("00:9F:33:01:02:01"));
    const std::string message = "ethswitch_get_all_apcp_sta; can't malloc\n";
    EXPECT_EQ(message + message, err());
    EXPECT_EQ(nullptr, list.first);
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(WiredStations, PortOfAnAddressIsThatOfTheFirstMatch) {
    table.rows = {station(0xAB, 0x01), station(2, 0x10), station(0xAB, 0x02)};
    EXPECT_EQ(4, ethswitch_get_port_num("00:9f:33:01:02:ab"));
    EXPECT_EQ(1, ethswitch_search_mac_table("00:9F:33:01:02:AB"));
    EXPECT_EQ(-1, ethswitch_get_port_num("00:9F:33:01:02:02"));
    EXPECT_EQ(0, ethswitch_search_mac_table("00:9F:33:01:02:02"));
    EXPECT_EQ(-1, ethswitch_get_port_num(nullptr));
    host().lan_switch_ports = {1};  // switch port 0 is then no user's
    EXPECT_EQ(1, ethswitch_get_port_num("00:9F:33:01:02:AB"));
}

TEST_F(WiredStations, LinkOfAnAddressTakesTheLockTwice) {
    table.rows = {station(1, 0x01)};
    table.end_with_last = true;
    for (const int up : {4, 0}) {
        phys[phy_read(0, 1)] = {up};
        clear_journal();
        EXPECT_EQ(up != 0, ethswitch_get_mac_port_link("00:9F:33:01:02:01"));
        const Lines lines = journal();
        EXPECT_EQ((Lines{"lock switch", "unlock switch", "lock switch", phy_read(0, 1)}),
                  Lines(lines.begin(), lines.begin() + 4));
        EXPECT_EQ("unlock switch", lines.back());
    }
    clear_journal();
    EXPECT_EQ(0, ethswitch_get_mac_port_link("00:9F:33:01:02:02"));
    EXPECT_EQ((Lines{"lock switch", "unlock switch"}), journal());
}

TEST_F(MacTable, DeletesTextsAndRawBytesAlike) {
    for (const auto& [address, digits] : {
             std::pair("00:1a:2B:3c:4D:5e", "001A2B3C4D5E"),
             {"00-1A-2B-3C-4D-5E",        "001A2B3C4D5E"},
             {"\x00\x1A\x2B\x3C\x4D\x5E", "001A2B3C4D5E"},
             {"0:1:2:3:4:5",              "000102030405"},
             {"00:1A:2B",                 "001A2B000000"},
             {"00:1A:xx:3C:4D:5E",        "001A00000000"},
             {"01:02-03:04:05:06",        "010200000000"},
             {"not-a-mac",                "000000000000"},
    }) {
        clear_journal();
        EXPECT_EQ(0, ethswitch_del_mac(address));
        EXPECT_EQ(under_lock({"$3 switch del " + std::string(digits)}), journal());
    }
    clear_journal();
    EXPECT_EQ(0, ethswitch_del_mac(nullptr));
    EXPECT_EQ(Lines{}, journal());
}

}  // namespace
