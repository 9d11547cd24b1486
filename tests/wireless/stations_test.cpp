// The driver's station table and what is looked up in it.
#include <cstring>
#include <memory>

#include "frame/host.h"
#include "platform/wireless.h"
#include "support/board.h"

namespace {

using harness::Lines;

class Stations : public harness::Board {
protected:
    Stations() {
        memset(&list, 'x', sizeof list);
        memset(expected.get(), 'x', sizeof list);
        on_command = [this](const std::string& command) {
            if (const size_t at = command.find("/var/"); at != command.npos && !table.empty())
                write(command.substr(at), table);
            return 1;  // nobody asks
        };
    }
    ~Stations() override { EXPECT_EQ("(none)", read("/var/run/station_table.ra0")); }

    static Lines query_of(const std::string& ifname) {
        return {"$ /sbin/iwpriv " + ifname + " get_mac_table > /var/run/station_table." + ifname};
    }
    static void put_ifname(station_list& target, const char* ifname) {
        memset(target.ifname, 'x', sizeof target.ifname);
        strcpy(target.ifname, ifname);
    }
    void list_stations(const std::string& rows, const char* ifname = "ra0") {
        table = "Station table\n" + rows;
        put_ifname(list, ifname);
        EXPECT_EQ(0, wireless_api_get_station_list(&list));
        EXPECT_EQ(19u, list.type);
    }
    // Every byte of the list and of its patterned surroundings.
    void expect_list(uint32_t count, const char* ifname = "ra0") {
        expected->count = count;
        expected->type = 19;
        put_ifname(*expected, ifname);
        EXPECT_EQ(0, memcmp(expected.get(), &list, sizeof list));
    }
    static void expect_bss(station_entry& entry, uint32_t wl_index, const char* ssid) {
        entry.wl_index = wl_index;
        strncpy(entry.ssid, ssid, sizeof entry.ssid);
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
        for (size_t last = 1; last <= 11; ++last) {
            SCOPED_TRACE(last);
            line += columns[last - 1] + " \t ";
            memset(&list, 'x', sizeof list);
            memset(expected.get(), 'x', sizeof list);
            list_stations(line + '\n', "rai0");
            station_entry& entry = expected->entries[0];
            strcpy(entry.mac, "00-11-22-AA-BB-CC");
            if (last >= 2) expect_bss(entry, 0x10001, "home-5g-guest");
            if (last >= 3) entry.column3 = -7;
            if (last >= 6) entry.column6 = -61;
            if (last >= 7) entry.column7 = 52;
            if (last >= 8) entry.column8 = 99;
            if (last >= 9 && !v2) entry.column9 = 123;
            if (last >= 9 && v2) entry.column9_v2 = 123;
            if (last >= 10 && !v2) entry.column10 = 124;
            if (last >= 10 && v2) entry.column10_v2 = 124;
            if (last >= 11 && v2) {
                const int32_t chain[8] = {-45, -47};
                memcpy(entry.chain, chain, sizeof chain);
                entry.chain_best = -45;
            }
            expect_list(1, "rai0");
        }
    }
}

TEST_F(Stations, CountIn64BitsInTheV2Format) {
    list_stations("V2x\n0 0 1 2 3 4 5 6 18446744073709551615 4294967296\n");
    EXPECT_EQ(UINT64_MAX, list.entries[0].column9_v2);
    EXPECT_EQ(1ull << 32, list.entries[0].column10_v2);
    table = "V2\nV1\n0 0 1 2 3 4 5 6 7 8\n";  // the second header decides
    EXPECT_EQ(0, wireless_api_get_station_list(&list));
    EXPECT_EQ(7, list.entries[0].column9);
    EXPECT_EQ(UINT64_MAX, list.entries[0].column9_v2);
}

TEST_F(Stations, HaveUpToEightChains) {
    const struct {
        const char* column;
        int32_t best;
        int32_t chain[8];
    } kRows[] = {
        {"-45/-47/-127/-127",            -45, {-45, -47, -127, -127}          },
        {"-47/-45",                      -45, {-47, -45}                      },
        {"0/-50",                        -50, {0, -50}                        },
        {"-40/0",                        0,   {-40, 0}                        },
        {"-9/-8/-7/-6/-5/-4/-3/-2/-1/5", -2,  {-9, -8, -7, -6, -5, -4, -3, -2}},
        {"x/3y/z",                       3,   {0, 3, 0}                       },
        {"/",                            0,   {}                              },
    };
    for (const auto& row : kRows) {
        list_stations("V2\n0 0 0 0 0 0 0 0 0 0 " + std::string(row.column) + '\n');
        EXPECT_EQ(row.best, list.entries[0].chain_best) << row.column;
        EXPECT_EQ(0, memcmp(row.chain, list.entries[0].chain, sizeof row.chain)) << row.column;
    }
}

TEST_F(Stations, BelongToTheirBss) {
    const std::string full(33, 's');
    memcpy(host().radios[0].bss[0].ssid, full.c_str(), 33);
    const std::string untouched(128, 'x');
    const struct {
        const char* column;
        uint32_t wl_index;
        std::string ssid;
    } kRows[] = {
        {"0",   0,          full.substr(1) },
        {"1",   1,          "home-2g-guest"},
        {"x",   0,          full.substr(1) },
        {"c1",  0,          full.substr(1) },
        {"1st", 1,          "home-2g-guest"},
        {"2",   2,          untouched      },
        {"-1",  0xFFFFFFFF, untouched      },
        {"C",   4096,       untouched      },
        {"CLI", 4096,       untouched      },
    };
    for (const auto& row : kRows) {
        memset(&list, 'x', sizeof list);
        list_stations(std::string("V1\nffffffffffff ") + row.column + '\n');
        std::string ssid = row.ssid;
        ssid.resize(128);
        EXPECT_EQ(row.wl_index, list.entries[0].wl_index) << row.column;
        EXPECT_EQ(ssid, std::string(list.entries[0].ssid, 128)) << row.column;
    }
}

TEST_F(Stations, AreNoneWithoutLinesBehindTheHeader) {
    for (const char* rows : {"", "V2\n", "V2", "V1\n\n \t\n\n"}) {
        list_stations(rows);
        expect_list(0);
    }
    EXPECT_EQ(query_of("ra0"), Lines{journal().back()});
}

TEST_F(Stations, AreAtMost128) {
    struct {
        station_list list;
        char guard[64];
    } guarded;
    memset(&guarded, 'x', sizeof guarded);
    for (const size_t count : {127u, 128u, 129u, 500u}) {
        table = "\n\n";
        for (size_t i = 0; i < count; ++i) table += "0123456789ab 0 1 2 3 4 5 6 7 8 9\n";
        put_ifname(guarded.list, "ra0");
        EXPECT_EQ(0, wireless_api_get_station_list(&guarded.list));
        EXPECT_EQ(std::min<size_t>(count, 128), guarded.list.count);
        EXPECT_STREQ("01-23-45-67-89-AB", guarded.list.entries[126].mac);
        EXPECT_EQ(count == 127 ? 'x' : '0', guarded.list.entries[127].mac[0]);
        EXPECT_EQ(std::string(64, 'x'), std::string(guarded.guard, 64));
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

TEST_F(Stations, CannotBeListedWithoutTheDriversFile) {
    put_ifname(list, "ra0");
    EXPECT_EQ(1, wireless_api_get_station_list(&list));
    expect_list(0);
    EXPECT_EQ(query_of("ra0"), journal());
    EXPECT_EQ(1, wireless_api_get_station_list(nullptr));
}

TEST_F(Stations, AreAskedOfAnyNameAsOneWord) {
    clear_journal();
    put_ifname(list, "a;b $(c)");
    EXPECT_EQ(1, wireless_api_get_station_list(&list));
    EXPECT_EQ((Lines{"$ /sbin/iwpriv 'a;b $(c)' get_mac_table > "
                     "'/var/run/station_table.a;b $(c)'"}),
              journal());
    for (const char* name : {"../ra0", "/etc/passwd"}) {
        clear_journal();
        put_ifname(list, name);
        EXPECT_EQ(1, wireless_api_get_station_list(&list));
        expect_list(0, name);
        EXPECT_EQ(Lines{}, journal());
    }
    memset(list.ifname, 'n', sizeof list.ifname);
    wireless_api_get_station_list(&list);
    EXPECT_EQ(query_of(std::string(32, 'n')), journal());
}

const std::string kTwoStations = "Station table\nV2\n001122aabbcc 0\nffffffffffff 1\n";

TEST_F(Stations, AreLookedUpOnTheirBss) {
    table = kTwoStations;
    const struct {
        const char* ifname;
        std::string mac;  // empty: any station
        int found;
    } kRows[] = {
        {"ra0",  "",                  1},
        {"ra1",  "",                  1},
        {"ra2",  "",                  0},
        {"rai1", "",                  1},
        {"ra0",  "00-11-22-aa-bb-cc", 1},
        {"ra0",  "00:11:22:AA:BB:CC", 1},
        {"ra0",  "ff-ff-ff-ff-ff-ff", 0},
        {"ra1",  "ff-ff-ff-ff-ff-ff", 1},
    };
    for (const auto& row : kRows) {
        clear_journal();
        std::string mac = row.mac;
        char* const text = mac.empty() ? nullptr : mac.data();
        EXPECT_EQ(row.found, wireless_api_check_station_exist(row.ifname, text)) << row.mac;
        EXPECT_EQ(query_of(row.ifname[2] == 'i' ? "rai0" : "ra0"), journal());
        std::string upper = row.mac;
        strtoupper(upper.data());
        EXPECT_EQ(upper, mac);
    }
}

TEST_F(Stations, IncludeTheRepeaterLink) {
    station_entry entry;
    memset(&entry, 'x', sizeof entry);
    const station_entry untouched = entry;
    for (const char* text : {"", kTwoStations.c_str()}) {
        table = text;
        EXPECT_EQ(0, wirelesss_get_wl_bh_sta(1, &entry));
        EXPECT_EQ(0, memcmp(&untouched, &entry, sizeof entry));
    }
    table = kTwoStations + "aaaaaaaaaaaa C 1 2 3 -50\nbbbbbbbbbbbb C\n";
    EXPECT_EQ(1, wirelesss_get_wl_bh_sta(1, &entry));
    EXPECT_STREQ("AA-AA-AA-AA-AA-AA", entry.mac);
    EXPECT_EQ(69632u, entry.wl_index);
    EXPECT_EQ(-50, entry.column6);
    EXPECT_EQ(query_of("rai0"), Lines{journal().back()});
}

TEST_F(Stations, HaveTheirCountersReset) {
    EXPECT_EQ(0, rt61_wireless_api_clear_station_info("ra1"));
    EXPECT_EQ(Lines{"$ /sbin/iwpriv ra1 set ResetCounter=1"}, journal());
    EXPECT_EQ(0, rt61_get_hostinfo_from_wireless());
}

TEST(SignalFigure, OfAnRssi) {
    for (const auto& [rssi, figure] : {
             std::pair(-90, 0),
             {-89,       2  },
             {-61,       72 },
             {-60,       75 },
             {-51,       97 },
             {-50,       100},
             {-49,       100},
             {-40,       100},
             {0,         100},
             {-91,       -2 },
             {-100,      -25},
             {INT32_MAX, 100}
    })
        EXPECT_EQ(figure, mt_rssi_to_pwr(rssi)) << rssi;
    EXPECT_LT(mt_rssi_to_pwr(INT32_MIN), 0);
}

}  // namespace
