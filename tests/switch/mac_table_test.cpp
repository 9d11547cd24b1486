// The walk through the switch's address table, wired stations, deleting.
#include <algorithm>
#include <climits>
#include <iterator>

#include "src/host/host.h"
#include "tests/switch/switch_board.h"

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
    static std::string given_up(int found) {
        return "Warning:switch table search given up, " + std::to_string(found) +
               " entries found\n";
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
    clear_journal();
    EXPECT_EQ(3, ethswitch_get_all_macentry(entries.data(), 4, 0x7F));
    EXPECT_EQ("", err());
    EXPECT_EQ(under_lock({"socket", "usleep 1000", "usleep 1000", "usleep 1000", "close"}),
              journal());
    EXPECT_EQ(3, ethswitch_get_all_macentry(entries.data(), 3, 0x7F));
    EXPECT_EQ("Warning:need more switch entry buffer\n", err());
}

TEST_F(MacTable, ABrokenTableDoesNotHoldUsForEver) {
    journal_registers = journal_sockets = false;
    table.never_ends = true;
    table.rows = {station(1, 1)};
    EXPECT_EQ(2046, walk(4096, 0x7F));
    EXPECT_EQ(0, walk(4096, 0));
    EXPECT_EQ(Lines(2 * 2045, "usleep 1000"), journal());
    table.rows[0].busy = 1;
    EXPECT_EQ(2046, walk(4096, 0x7F));
    clear_journal();
    table.rows[0].busy = INT_MAX;
    EXPECT_EQ(0, walk(4096, 0x7F));
    EXPECT_EQ(given_up(0), err());
    EXPECT_EQ(Lines(4096, "usleep 5000"), journal());
    table.rows = {station(1, 1, 0)};
    EXPECT_EQ(0, walk(4096, 0x7F));
    EXPECT_EQ(given_up(0), err());
    EXPECT_EQ(4096u, journal().size());
}

TEST_F(MacTable, BusyPollsCountAnewAfterAnEntryOfAnyKind) {
    journal_registers = journal_sockets = false;
    table.rows.assign(1400, station(1, 1, 0));
    for (harness::AddressTable::Row& row : table.rows) row.busy = 3;
    table.rows.push_back(station(2, 1));
    EXPECT_EQ(1, walk(4096, 0x7F));
    EXPECT_EQ("", err());
    table.rows.push_back(station(3, 1));
    table.rows.back().busy = INT_MAX;
    EXPECT_EQ(1, walk(4096, 0x7F));
    EXPECT_EQ(given_up(1), err());
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
    std::string listed;  // digits: kind, address, user port
    for (const wired_station* node = list.first; node != nullptr; node = node->next)
        listed += std::to_string(node->kind * 100 + node->mac[5] * 10u + node->user_port) + ' ';
    EXPECT_EQ("114 122 151 ", listed);
    EXPECT_EQ(6, apcp_get_stalist_from_ethswitch(&list));
    clear_journal();
    fail_nth("malloc", 1);
    EXPECT_EQ(0, apcp_get_stalist_from_ethswitch(&list));
    EXPECT_EQ("ethswitch_get_all_apcp_sta; can't malloc\n", err());
    EXPECT_EQ(Lines{}, journal());
    free_all_list(&list, nullptr);
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
    phys[phy_read(0, 1)] = {4};
    EXPECT_EQ(1, ethswitch_get_mac_port_link("00:9F:33:01:02:01"));
    clear_journal();
    phys[phy_read(0, 1)] = {0};
    EXPECT_EQ(0, ethswitch_get_mac_port_link("00:9F:33:01:02:01"));
    EXPECT_EQ(0, ethswitch_get_mac_port_link("00:9F:33:01:02:02"));  // on no port
    EXPECT_EQ((Lines{"lock switch", "unlock switch", "lock switch", phy_read(0, 1), phy_read(0, 1),
                     phy_read(0, 1), "unlock switch", "lock switch", "unlock switch"}),
              journal());
}

TEST_F(MacTable, DeletesTextsAndRawBytesAlike) {
    for (const char* address :
         {"00:1a:2B:3c:4D:5e", "00-1A-2B-3C-4D-5E", "\x00\x1A\x2B\x3C\x4D\x5E", "0:1:2:3:4:5",
          "00:1A:2B", "00:1A:xx:3C:4D:5E", "01:02-03:04:05:06", "1A2:33:44", "not-a-mac",
          static_cast<const char*>(nullptr)})
        EXPECT_EQ(0, ethswitch_del_mac(address));
    Lines expected;
    for (const char* digits :
         {"001A2B3C4D5E", "001A2B3C4D5E", "001A2B3C4D5E", "000102030405", "001A2B000000",
          "001A00000000", "010200000000", "1A0000000000", "000000000000"})
        std::ranges::copy(under_lock({std::string("$3 switch del ") + digits}),
                          std::back_inserter(expected));
    EXPECT_EQ(expected, journal());
}

}  // namespace
