// The driver's station table and what is looked up in it.
#include <cstring>
#include <memory>

#include "platform/wireless.h"
#include "src/host/host.h"
#include "tests/support/driver.h"

namespace {

using harness::rows;

class Stations : public harness::Driver {
protected:
    Stations() {
        renew();
        on_command = [this](const std::string& command) {
            if (const size_t at = command.find("/var/"); at != command.npos && !table.empty())
                write(command.substr(at), table);
            return 1;  // nobody asks
        };
    }
    ~Stations() override { EXPECT_EQ("(none)", read("/var/run/station_table.ra0")); }

    void renew() {
        memset(&list, 'x', sizeof list);
        memset(expected.get(), 'x', sizeof list);
    }
    static std::string query_of(const std::string& ifname) {
        return "$ /sbin/iwpriv " + ifname + " get_mac_table > /var/run/station_table." + ifname +
               '\n';
    }
    static void put_ifname(station_list& target, const std::string& ifname) {
        memset(target.ifname, 'x', sizeof target.ifname);
        strcpy(target.ifname, ifname.c_str());
    }
    void list_stations(const std::string& rows, const char* ifname = "ra0") {
        table = "Station table\n" + rows;
        put_ifname(list, ifname);
        EXPECT_EQ(0, wireless_api_get_station_list(&list));
    }
    // Every byte of the list and of its patterned surroundings.
    void expect_list(uint32_t count, const std::string& ifname = "ra0") {
        expected->count = count;
        expected->type = 19;
        put_ifname(*expected, ifname);
        EXPECT_EQ(0, memcmp(expected.get(), &list, sizeof list));
    }

    std::string table;  // empty: the command leaves no file
    station_list list;
    const std::unique_ptr<station_list> expected = std::make_unique<station_list>();
};

TEST_F(Stations, FillTheColumnsThatTheirLineHas) {
    for (const bool v2 : {false, true}) {
        const std::string columns[] = {"001122aabbcc9", "1",   "-7",  "skipped", "9", "-61", "52",
                                       "+99",           "123", "124", "-45/-47"};
        std::string line = v2 ? "V2\n" : "V1\n";
        renew();
        station_entry& entry = expected->entries[0];
        for (size_t last = 1; last <= 11; ++last) {
            SCOPED_TRACE(last);
            line += columns[last - 1] + " \t ";
            memset(&list, 'x', sizeof list);
            list_stations(line + '\n', "rai0");
            if (last == 1) strcpy(entry.mac, "00-11-22-AA-BB-CC");
            if (last == 2) {
                entry.wl_index = 0x10001;
                strncpy(entry.ssid, "home-5g-guest", sizeof entry.ssid);
            }
            if (last == 3) entry.column3 = -7;
            if (last == 6) entry.column6 = -61;
            if (last == 7) entry.column7 = 52;
            if (last == 8) entry.column8 = 99;
            if (last == 9) v2 ? entry.column9_v2 = 123 : entry.column9 = 123;
            if (last == 10) v2 ? entry.column10_v2 = 124 : entry.column10 = 124;
            if (last == 11 && v2) {
                const int32_t chain[8] = {-45, -47};
                memcpy(entry.chain, chain, sizeof chain);
                entry.chain_best = -45;
            }
            expect_list(1, "rai0");
        }
    }
}

TEST_F(Stations, CountIn64BitsInTheV2Format) {
    for (const std::string text :
         {"4294967296", "18446744073709551616", "-1", "+7", "-18446744073709551615",
          "-18446744073709551616", "\v\f\r9", "5x", "x", "-", "0x10"}) {
        list_stations("V2x\n0 0 1 2 3 4 5 6 18446744073709551615 " + text + '\n');
        EXPECT_EQ(UINT64_MAX, list.entries[0].column9_v2);
        EXPECT_EQ(strtoull(text.c_str(), nullptr, 10), list.entries[0].column10_v2) << text;
    }
    table = "V2\nV1\n0 0 1 2 3 4 5 6 7 8\n";  // the second header decides
    EXPECT_EQ(0, wireless_api_get_station_list(&list));
    EXPECT_EQ(7, list.entries[0].column9);
    EXPECT_EQ(UINT64_MAX, list.entries[0].column9_v2);
}

TEST_F(Stations, HaveUpToEightChains) {
    for (const auto& [column, best, chains] : rows<std::string, int32_t, std::string>(
             "-45/-47/-127/-127 -45 -45,-47,-127,-127,0,0,0,0,  -47/-45 -45 -47,-45,0,0,0,0,0,0, "
             "0/-50 -50 0,-50,0,0,0,0,0,0,  -40/0 0 -40,0,0,0,0,0,0,0,  / 0 0,0,0,0,0,0,0,0, "
             "-9/-8/-7/-6/-5/-4/-3/-2/-1/5 -2 -9,-8,-7,-6,-5,-4,-3,-2,  x/3y/z 3 "
             "0,3,0,0,0,0,0,0,")) {
        list_stations("V2\n0 0 0 0 0 0 0 0 0 0 " + column + '\n');
        std::string text;
        for (const int32_t chain : list.entries[0].chain) text += std::to_string(chain) + ',';
        EXPECT_EQ(chains, text) << column;
        EXPECT_EQ(best, list.entries[0].chain_best) << column;
    }
}

TEST_F(Stations, BelongToTheirBss) {
    memset(host().radios[0].bss[0].ssid, 's', 33);
    for (const auto& [column, wl_index] :
         rows<std::string, int>("0 0 1 1 x 0 c1 0 1st 1 2 2 -1 -1 C 4096 CLI 4096")) {
        renew();
        list_stations("V1\nffffffffffff " + column + '\n');
        std::string ssid(wl_index == 0 ? 32 : 128, wl_index == 0 ? 's' : 'x');
        if (wl_index == 1) ssid = "home-2g-guest";
        ssid.resize(128);
        EXPECT_EQ(static_cast<uint32_t>(wl_index), list.entries[0].wl_index) << column;
        EXPECT_EQ(ssid, std::string(list.entries[0].ssid, 128)) << column;
    }
}

TEST_F(Stations, AreNoneWithoutLinesBehindTheHeader) {
    for (const char* rows : {"", "V2\n", "V2", "V1\n\n \t\n\n"}) {
        list_stations(rows);
        expect_list(0);
        EXPECT_EQ(query_of("ra0"), taken());
    }
}

TEST_F(Stations, AreAtMost128) {
    for (const size_t count : {127u, 128u, 129u, 500u}) {
        std::string lines = "V1\n";
        for (size_t i = 0; i < count; ++i) lines += "0123456789ab\n";
        list_stations(lines);
        EXPECT_EQ(std::min<size_t>(count, 128), list.count);
        EXPECT_STREQ("01-23-45-67-89-AB", list.entries[list.count - 1].mac);
    }
}

// A line of more than 255 characters reads as several.
TEST_F(Stations, OfALongLineAreItsPieces) {
    list_stations("V1\n" + std::string(10000, 'a') + "\nbbbbbbbbbbbb\n");
    EXPECT_EQ(41u, list.count);
    EXPECT_STREQ("AA-AA-AA-AA-AA-AA", list.entries[39].mac);
    EXPECT_STREQ("BB-BB-BB-BB-BB-BB", list.entries[40].mac);
    list_stations(std::string(200, 'a') + "\n");
    EXPECT_EQ(0u, list.count);
    list_stations(std::string(256, 'a') + "\nbbbbbbbbbbbb\n");
    EXPECT_EQ(2u, list.count);
}

// Asked of no name that leads out of the folder.
TEST_F(Stations, CannotBeListedWithoutTheDriversFile) {
    EXPECT_EQ(1, wireless_api_get_station_list(nullptr));
    for (const char* name : {"ra0", "../ra0", "/etc/passwd"}) {
        put_ifname(list, name);
        EXPECT_EQ(1, wireless_api_get_station_list(&list));
        expect_list(0, name);
        EXPECT_EQ(strchr(name, '/') != nullptr ? "" : query_of(name), taken());
    }
    memset(list.ifname, 'n', sizeof list.ifname);
    EXPECT_EQ(1, wireless_api_get_station_list(&list));
    EXPECT_EQ(query_of(std::string(32, 'n')), taken());
}

const std::string kTwoStations = "Station table\nV2\n001122aabbcc 0\nffffffffffff 1\n";

TEST_F(Stations, AreLookedUpOnTheirBss) {
    table = kTwoStations;
    for (const auto& [ifname, mac, found] : rows<std::string, std::string, int>(
             "ra0 any 1  ra1 any 1  ra2 any 0  rai1 any 1  ra0 00-11-22-aa-bb-cc 1 "
             "ra0 00:11:22:AA:BB:CC 1  ra0 ff-ff-ff-ff-ff-ff 0  ra1 ff-ff-ff-ff-ff-ff 1")) {
        std::string text = mac;
        std::string upper = mac;
        if (mac != "any") strtoupper(upper.data());
        EXPECT_EQ(found, wireless_api_check_station_exist(ifname.c_str(),
                                                          mac == "any" ? nullptr : text.data()))
            << ifname << mac;
        EXPECT_EQ(query_of(ifname == "rai1" ? "rai0" : "ra0"), taken());
        EXPECT_EQ(upper, text);
    }
}

TEST_F(Stations, IncludeTheRepeaterLink) {
    station_entry& entry = list.entries[0];
    for (const char* text : {"", kTwoStations.c_str()}) {
        table = text;
        EXPECT_EQ(0, wirelesss_get_wl_bh_sta(1, &entry));
        EXPECT_EQ(0, memcmp(expected.get(), &list, sizeof list));
        EXPECT_EQ(query_of("rai0"), taken());
    }
    table = kTwoStations + "aaaaaaaaaaaa C 1 2 3 -50\nbbbbbbbbbbbb C\n";
    EXPECT_EQ(1, wirelesss_get_wl_bh_sta(1, &entry));
    EXPECT_STREQ("AA-AA-AA-AA-AA-AA", entry.mac);
    EXPECT_EQ(69632u, entry.wl_index);
    EXPECT_EQ(-50, entry.column6);
}

TEST(SignalFigure, OfAnRssi) {
    for (const auto& [rssi, figure] : rows<int, int>(
             "-90 0  -89 2  -61 72  -60 75  -51 97  -50 100  -49 100  0 100  -91 -2  -100 -25 "
             "2147483647 100"))
        EXPECT_EQ(figure, mt_rssi_to_pwr(rssi)) << rssi;
    EXPECT_LT(mt_rssi_to_pwr(INT32_MIN), 0);
}

}  // namespace
