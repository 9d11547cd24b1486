// The walk through the switch's address table, wired stations, deleting.
#include <algorithm>

#include "frame/host.h"
#include "switch/switch_board.h"

namespace {

using harness::AddressTable;
using harness::Lines;

AddressTable::Row station(uint8_t last, uint32_t port_map, uint32_t age = 0xFF) {
    return AddressTable::learnt({0x00, 0x9F, 0x33, 0x01, 0x02, last}, port_map, age);
}

class MacTable : public harness::SwitchBoard {
protected:
    // The last bytes of the addresses that a walk stores, in a text.
    std::string walk(int capacity = 8, int mask = 0x7F) {
        std::vector<switch_mac_entry> entries(static_cast<size_t>(std::max(capacity, 1)));
        std::string lasts;
        const int count = mt753x_get_all_macentry(entries.data(), capacity, mask);
        for (size_t i = 0; i < static_cast<size_t>(count); ++i)
            lasts += harness::hexadecimal(entries[i].mac[5]) + ' ';
        return lasts;
    }
    long pauses(const std::string& line) const {
        const Lines lines = journal();
        return std::ranges::count(lines, line);
    }
    // A table that goes on and on, with the pauses alone in the journal.
    void fill(size_t count) {
        journal_registers = journal_sockets = false;
        for (size_t i = 0; i < count; ++i) table.rows.push_back(station(1, 1));
    }
};

TEST_F(MacTable, AnEmptyTableIsOnePoll) {
    EXPECT_EQ("", walk());
    EXPECT_EQ((Lines{"socket", "reg 80 8004", "reg 80", "close"}), journal());
}

TEST_F(MacTable, EntriesAreReadInOrderWithTheirPauses) {
    table.rows = {station(1, 0x02), station(2, 0x41)};
    table.rows[1].busy = 1;
    std::vector<switch_mac_entry> entries(4);
    std::memset(entries.data(), '#', 4 * sizeof(switch_mac_entry));
    EXPECT_EQ(2, mt753x_get_all_macentry(entries.data(), 4, 0x7F));
    EXPECT_EQ(
        0, std::memcmp(entries.data(),
                       "\x00\x9F\x33\x01\x02\x01\xA5\x02\x00\x9F\x33\x01\x02\x02\xA5\x41###", 19));
    EXPECT_EQ((Lines{"socket", "reg 80 8004", "reg 80", "reg 8c", "reg 84", "reg 88", "reg 80 8005",
                     "usleep 1000", "reg 80", "usleep 5000", "reg 80", "reg 8c", "reg 84", "reg 88",
                     "reg 80 8005", "usleep 1000", "reg 80", "close"}),
              journal());
}

TEST_F(MacTable, AnEntryWithTheEndBitIsTheLast) {
    table.rows = {station(1, 1)};
    table.end_with_last = true;
    EXPECT_EQ("1 ", walk());
    EXPECT_EQ((Lines{"socket", "reg 80 8004", "reg 80", "reg 8c", "reg 84", "reg 88", "close"}),
              journal());
}

TEST_F(MacTable, AnAgedEntryIsPassedOverAtOnce) {
    table.rows = {station(1, 1, 0), station(2, 1)};
    table.end_with_last = true;
    EXPECT_EQ("2 ", walk());
    EXPECT_EQ((Lines{"socket", "reg 80 8004", "reg 80", "reg 8c", "reg 80 8005", "reg 80", "reg 8c",
                     "reg 84", "reg 88", "close"}),
              journal());
}

TEST_F(MacTable, OnlyUnicastAddressesOfTheMaskAreStored) {
    table.rows = {station(1, 0x01), station(2, 0x10), station(3, 0x40),
                  AddressTable::learnt({0x01, 0, 0x5E, 0, 0, 4}, 0x01), station(5, 0x11)};
    EXPECT_EQ("1 2 3 5 ", walk());
    EXPECT_EQ("1 5 ", walk(8, 0x0F));
    EXPECT_EQ("3 ", walk(8, 0x40));
    EXPECT_EQ("", walk(8, 0));
}

TEST_F(MacTable, StopsAtTheCapacityAndWarns) {
    table.rows = {station(1, 1), station(2, 1), station(3, 1)};
    EXPECT_EQ("1 2 ", walk(2));
    EXPECT_EQ("", walk(0));
    clear_journal();
    journal_registers = false;
    switch_mac_entry entries[4];
    EXPECT_EQ(3, ethswitch_get_all_macentry(entries, 4, 0x7F));
    EXPECT_EQ("", err());
    EXPECT_EQ(3, ethswitch_get_all_macentry(entries, 3, 0x7F));
    EXPECT_EQ("Warning:need more switch entry buffer\n", err());
    const Lines once = {"lock switch", "socket", "usleep 1000",  "usleep 1000",
                        "usleep 1000", "close",  "unlock switch"};
    Lines twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(twice, journal());
}

TEST_F(MacTable, PausesWhileBusy) {
    table.rows = {station(1, 1)};
    table.rows[0].busy = 40;
    EXPECT_EQ("1 ", walk());
    EXPECT_EQ(40, pauses("usleep 5000"));
}

TEST_F(MacTable, WalksAtMost2046Entries) {
    fill(2048);
    std::vector<switch_mac_entry> entries(4096);
    EXPECT_EQ(2046, mt753x_get_all_macentry(entries.data(), 4096, 0x7F));
    EXPECT_EQ(Lines(2045, "usleep 1000"), journal());
}

TEST_F(MacTable, ABrokenTableDoesNotHoldUsForEver) {
    fill(1);
    table.never_presents = true;
    EXPECT_EQ("", walk());
    EXPECT_EQ(Lines(2000, "usleep 5000"), journal());
    clear_journal();
    table.never_presents = false;
    table.never_ends = true;
    EXPECT_EQ("", walk(8, 0));
    EXPECT_EQ(Lines(2045, "usleep 1000"), journal());
    clear_journal();
    table.rows = {station(1, 1, 0)};
    EXPECT_EQ("", walk());
    EXPECT_EQ(Lines{}, journal());
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
                  station(4, 0x20), station(5, 0x18), AddressTable::learnt({1, 0, 0, 0, 0, 6}, 1)};
    wired_station_list list = {};
    EXPECT_EQ(3, apcp_get_stalist_from_ethswitch(&list));
    std::string listed;
    for (const wired_station* node = list.first; node != nullptr; node = node->next)
        listed += harness::hexadecimal(node->kind) + ':' + harness::hexadecimal(node->mac[5]) +
                  '@' + harness::hexadecimal(node->user_port) + ' ';
    EXPECT_EQ("1:1@4 1:2@2 1:5@1 ", listed);
    EXPECT_EQ(6, apcp_get_stalist_from_ethswitch(&list));
    free_all_list(&list, nullptr);
    clear_journal();
}

TEST_F(WiredStations, SwitchPortsWithoutAUserPortAreSkipped) {
    host().lan_switch_ports = {0, 1};
    host().hw.lan_port_count = 3;
    table.rows = {station(1, 0x04), station(2, 0x08), station(3, 0x02)};
    EXPECT_EQ(2, ethswitch_get_port_num("00:9F:33:01:02:03"));
    EXPECT_EQ(-1, ethswitch_get_port_num("00:9F:33:01:02:01"));
    EXPECT_EQ(-1, ethswitch_get_port_num("00:9F:33:01:02:02"));
}

TEST_F(WiredStations, WithoutMemoryThereAreNone) {
    table.rows = {station(1, 0x01)};
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
}

TEST_F(WiredStations, LinkOfAnAddressTakesTheLockTwice) {
    table.rows = {station(1, 0x01)};
    table.end_with_last = true;
    for (const int up : {4, 0}) {
        phy(0, 1, {up});
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

class MacEdit : public harness::SwitchBoard {};

TEST_F(MacEdit, DeletesTextsAndRawBytesAlike) {
    for (const auto& [address, digits] : {
             std::pair("00:1a:2B:3c:4D:5e", "001A2B3C4D5E"),
             {"00-1A-2B-3C-4D-5E",        "001A2B3C4D5E"},
             {"\x00\x1A\x2B\x3C\x4D\x5E", "001A2B3C4D5E"},
             {"0:1:2:3:4:5",              "000102030405"},
             {"00:1A:2B",                 "001A2B000000"},
             {"00:1A:xx:3C:4D:5E",        "001A00000000"},
             {"01:02-03:04:05:06",        "010200000000"},
             {"\xFF\xFF\xFF\xFF\xFF\xFF", "FFFFFFFFFFFF"}
    }) {
        clear_journal();
        EXPECT_EQ(0, ethswitch_del_mac(address));
        EXPECT_EQ(under_lock({"$3 switch del " + std::string(digits)}), journal());
    }
    clear_journal();
    EXPECT_EQ(0, ethswitch_del_mac(nullptr));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(MacEdit, FlushesByTheTool) {
    EXPECT_EQ(0, ethswitch_clear_mactable());
    EXPECT_EQ(under_lock({"$ switch clear"}), journal());
}

}  // namespace
