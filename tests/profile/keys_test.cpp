// What each setting of the records writes.
#include <sstream>
#include <vector>

#include "src/host/host.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/library_hook.h"

namespace {

using harness::Lines;
using harness::put_text;
using Conf = wireless_conf;

class ProfileKeys : public harness::SampleRadios {
protected:
    // The field's value in each BSS, and the keys that follow. A key without "=" is not in the
    // profile; the shipped one has WirelessMode=2, HT_TxStream=9; and ApCliKey1Str=left over.
    struct Case {
        int32_t Conf::*field;
        std::vector<int> values;
        Lines keys;
    };
    void expect_cases(const std::vector<Case>& cases) {
        const board::State sample = host();
        for (const auto& [field, values, keys] : cases) {
            SCOPED_TRACE(testing::PrintToString(values));
            host() = sample;
            ship_profiles();
            for (size_t bss = 0; bss < values.size(); ++bss) record(0, bss).*field = values[bss];
            radio(0).bss_count = static_cast<int>(values.size());
            apply(0);
            expect_keys(0, keys);
        }
        host() = sample;
    }
};

TEST_F(ProfileKeys, OfTheRadioFollowItsRecord) {
    record(0).apcli_encryption = WIRELESS_CIPHER_WEP2;
    expect_cases({
        {&Conf::wireless_mode,        {0},           {"BasicRate", "WirelessMode=2"}                            },
        {&Conf::wireless_mode,        {1},           {"BasicRate=15", "WirelessMode=0"}                         },
        {&Conf::wireless_mode,        {2},           {"BasicRate=3", "WirelessMode=1"}                          },
        {&Conf::wireless_mode,        {3},           {"BasicRate=351", "WirelessMode=4"}                        },
        {&Conf::wireless_mode,        {4},           {"BasicRate=351", "WirelessMode=6"}                        },
        {&Conf::wireless_mode,        {5},           {"BasicRate=351", "WirelessMode=7"}                        },
        {&Conf::wireless_mode,        {6},           {"BasicRate=15", "WirelessMode=9"}                         },
        {&Conf::wireless_mode,        {9},           {"BasicRate=15", "WirelessMode=8"}                         },
        {&Conf::wireless_mode,        {10},          {"BasicRate=15", "WirelessMode=14"}                        },
        {&Conf::wireless_mode,        {11},          {"BasicRate=15", "WirelessMode=14"}                        },
        {&Conf::wireless_mode,        {12},          {"BasicRate", "WirelessMode=2"}                            },
        {&Conf::dfs_enable,           {1},           {"CountryRegionABand=13", "IEEE80211H=1", "CountryCode=US"}},
        {&Conf::dfs_enable,           {2},           {"CountryRegionABand=7", "IEEE80211H=0", "CountryCode="}   },
        {&Conf::dfs_enable,           {3},           {"IEEE80211H=0"}                                           },
        {&Conf::ext_channel,          {3},           {"HT_EXTCHA=1;1;1;1"}                                      },
        {&Conf::ext_channel,          {2},           {"HT_EXTCHA=0;0;0;0"}                                      },
        {&Conf::ext_channel,          {-1},          {"HT_EXTCHA=0;0;0;0"}                                      },
        {&Conf::bandwidth,            {0},           {"VHT_BW=0", "HT_BW=1", "HT_BSSCoexistence=1"}             },
        {&Conf::bandwidth,            {20},          {"VHT_BW=0", "HT_BW=0", "HT_BSSCoexistence=0"}             },
        {&Conf::bandwidth,            {40},          {"VHT_BW=0", "HT_BW=1", "HT_BSSCoexistence=0"}             },
        {&Conf::bandwidth,            {80},          {"VHT_BW=1", "HT_BW=1", "HT_BSSCoexistence=0"}             },
        {&Conf::bandwidth,            {160},         {"VHT_BW=0", "HT_BW=1"}                                    },
        {&Conf::bandwidth,            {-1},          {"HT_BW=1"}                                                },
        {&Conf::beamforming,          {5},           {"ETxBfEnCond=1", "ITxBfEn=0", "MUTxRxEnable=1"}           },
        {&Conf::beamforming,          {-6},          {"ETxBfEnCond=0", "ITxBfEn=1", "MUTxRxEnable=0"}           },
        {&Conf::channel,              {-1},          {"Channel=-1", "AutoChannelSelect=0"}                      },
        {&Conf::beacon_period,        {-2147483648}, {"BeaconPeriod=-2147483648"}                               },
        {&Conf::wps_enable,           {0, 1},        {"WscConfMode=0;0;0;0"}                                    },
        {&Conf::apcli_wep_key_format, {1},           {"ApCliKey1Type=0"}                                        },
        {&Conf::apcli_wep_key_format, {3},           {"ApCliKey1Type=1"}                                        },
        {&Conf::apcli_encryption,     {0},           {"ApCliEncrypType=NONE", "ApCliDefaultKeyID"}              },
        {&Conf::apcli_encryption,     {2},           {"ApCliKey4Type=0", "ApCliWPAPSK"}                         },
        {&Conf::apcli_encryption,     {3},           {"ApCliEncrypType=TKIP", "ApCliDefaultKeyID=2"}            },
        {&Conf::apcli_encryption,     {4},           {"ApCliEncrypType=AES", "ApCliKey1Type"}                   },
        {&Conf::apcli_encryption,     {-1},          {"ApCliEncrypType", "ApCliKey1Str=left over"}              },
    });
}

TEST_F(ProfileKeys, OfTheBsssFollowTheirRecords) {
    expect_cases({
        {&Conf::stream_count,   {2, 0},         {"HT_TxStream=2;2;", "HT_RxStream=2;2;"}                 },
        {&Conf::stream_count,   {0, 2},         {"HT_TxStream=9;", "HT_RxStream"}                        },
        {&Conf::stream_count,   {-1},           {"HT_TxStream=-1;"}                                      },
        {&Conf::wmm_capable,    {0, 1},         {"WmmCapable=0;0;", "APSDCapable=0;0;"}                  },
        {&Conf::no_forwarding,  {0, 1, 2, 3},   {"NoForwarding=0;1;0;;"}                                 },
        {&Conf::no_forwarding,  {-1},           {"NoForwarding="}                                        },
        {&Conf::ssid_broadcast, {0, 1},         {"HideSSID=1;0;", "SSID2=net 1", "SSID3"}                },
        {&Conf::ssid_broadcast, {256, 0, 2},    {"HideSSID=0;1;0;"}                                      },
        {&Conf::auth_mode,      {0, 1, 2, 3},   {"AuthMode=OPEN;OPEN;SHARED;WEPAUTO;"}                   },
        {&Conf::auth_mode,      {4, 5, 6, 7},   {"AuthMode=WPA;WPAPSK;OPEN;OPEN;", "WscConfMode=0;0;0;0"}},
        {&Conf::auth_mode,      {8, 9, 10},     {"AuthMode=WPA2;WPA2PSK;WPAPSKWPA2PSK;"}                 },
        {&Conf::auth_mode,      {9, 4},         {"WscConfMode=7;0;0;0"}                                  },
        {&Conf::auth_mode,      {11, 12, -1},   {"AuthMode=WPA1WPA2;OPEN;OPEN;"}                         },
        {&Conf::encryption,
         {0, 1, 2, 3},
         {"EncrypType=NONE;WEP;WEP;TKIP;", "DefaultKeyID=1;2;3;2;"}                                      },
        {&Conf::encryption,     {0, 1, 2, 3},   {"Key1Str1", "Key4Str3=wep 2 3"}                         },
        {&Conf::encryption,
         {4, 5, 6, -1},
         {"EncrypType=AES;TKIPAES;NONE;NONE;", "DefaultKeyID=2;2;3;4;"}                                  },
        {&Conf::encryption,     {4, 5, 6, -1},  {"Key1Str4", "WPAPSK4=psk 3"}                            },
        {&Conf::wep_key_format, {0, 1, 2, 3},   {"Key1Type=1;0;1;1;", "Key4Type=1;0;1;1;"}               },
        {&Conf::radius_port,    {0, 65535, -1}, {"RADIUS_Port=1812;65535;-1;"}                           },
    });
}

// Any number but 0 is a yes.
TEST_F(ProfileKeys, OfTwoConditionsLookAtBoth) {
    static int is_8021x;
    const harness::LibraryHook hook(
        "wireless_check_8021x_enabled", +[](const wireless_conf*) { return is_8021x; });
    const struct {
        int first, second;
        const char *snooping, *configured, *offered, *wmm, *apsd;
    } kRows[] = {
        {0,   0, "0;", "1;1;1;1", "0;0;0;0", "0;", "0;"},
        {0,   2, "1;", "2;2;2;2", "7;0;0;0", "0;", "1;"},
        {256, 0, "1;", "2;2;2;2", "0;0;0;0", "1;", "0;"},
        {-1,  1, "1;", "2;2;2;2", "0;0;0;0", "1;", "1;"},
    };
    radio(0).bss_count = 1;
    Conf& conf = record(0);
    for (const auto& row : kRows) {
        host().igmp_proxy = is_8021x = conf.wps_configured = conf.wmm_capable = row.first;
        conf.igmp_snoop = conf.wps_enable = conf.wps_configured2 = conf.apsd_capable = row.second;
        apply(0);
        expect_keys(
            0, {std::string("IgmpSnEnable=") + row.snooping,
                std::string("WscConfStatus=") + row.configured,
                std::string("WscConfMode=") + row.offered, std::string("WmmCapable=") + row.wmm,
                std::string("APSDCapable=") + row.apsd});
    }
}

TEST_F(ProfileKeys, CountryIsJapanInTwoCapitals) {
    for (const std::string country : {"JP", "jp", "JPN", "J", "", "US"}) {
        put_text(record(0).country_code, country);
        apply(0);
        expect_keys(0, {country == "JP" ? "CountryRegion=5" : "CountryRegion=1"});
    }
}

TEST_F(ProfileKeys, TextsMayFillTheirFields) {
    Conf& conf = record(0);
    const auto full = [](const char* key, size_t size) { return key + std::string(size, 'x'); };
    for (const std::span<char> field : std::initializer_list<std::span<char>>{
             conf.ssid, conf.wep_key[3], conf.wpa_psk, conf.apcli_ssid, conf.apcli_bssid,
             conf.apcli_wep_key[3], conf.apcli_wpa_psk, conf.radius_key, conf.country_code,
             conf.radius_server})
        std::ranges::fill(field, 'x');
    conf.dfs_enable = 1;
    conf.encryption = conf.apcli_encryption = WIRELESS_CIPHER_WEP;
    apply(0);
    expect_keys(0, {full("SSID1=", 128), full("Key4Str1=", 27), full("WPAPSK1=", 108),
                    full("ApCliSsid=", 128), full("ApCliBssid=", 20), full("ApCliKey4Str=", 27),
                    full("RADIUS_Key1=", 128), full("CountryCode=", 8), "Key3Str1=wep 0 2",
                    full("RADIUS_Server=", 30) + ';'});  // where its entry ends
    conf.apcli_encryption = WIRELESS_CIPHER_AES;
    apply(0);
    expect_keys(0, {full("ApCliWPAPSK=", 108)});
}

// A neighbour's SSID becomes the repeater client's.
TEST_F(ProfileKeys, EndAtALineFeedInTheirText) {
    const std::string text = "a;\rb\nInjected=1\n";
    const std::string line = text.substr(0, text.find('\n'));
    radio(0).bss_count = 2;
    Conf& conf = record(0);
    for (const std::span<char> field : std::initializer_list<std::span<char>>{
             conf.ssid, conf.wep_key[0], conf.wpa_psk, conf.apcli_ssid, conf.apcli_bssid,
             conf.apcli_wep_key[3], conf.radius_key, conf.radius_server, host().pi})
        put_text(field, text);
    put_text(conf.country_code, "a\nb=1");
    put_text(record(0, 1).radius_server, '\n' + text);
    conf.dfs_enable = 1;
    conf.encryption = conf.apcli_encryption = WIRELESS_CIPHER_WEP;
    host().my_mac = host().lan_address = host().wsc_device_name = text;
    apply(0);
    Lines expected = {"CountryCode=a", "RADIUS_Server=" + line + ";0.0.0.0;", "Injected", "b"};
    for (const char* key :
         {"SSID1=", "Key1Str1=", "WPAPSK1=", "ApCliSsid=", "ApCliBssid=", "ApCliKey4Str=",
          "RADIUS_Key1=", "own_ip_addr=", "WscModelName=", "WscDeviceName=", "WscModelNumber="})
        expected.push_back(key + line);
    expect_keys(0, expected);
}

TEST_F(ProfileKeys, OfARadioWithoutAPathGoNowhere) {
    write_l1profile("INDEX0_main_ifname=ra0\nINDEX0_ext_ifname=ra\nINDEX0_apcli_ifname=apcli\n");
    EXPECT_EQ("err WL_MODE: 0 Profile Name : \nerr Tx Power for Channel 3 -> 60\n", apply(0));
    EXPECT_EQ(golden("shipped_2g.dat"), read(harness::kProfilePath[0]));
}

TEST_F(ProfileKeys, PowerIsScaledByTheLimit) {
    // Wanted, limit, set; the last one in factory test mode.
    board::Regulation& rule = host().regulations.emplace_back();
    for (const char* row : {"100 80 80", "100 -1 100", "33 50 16", "100 0 0", "50 200 100",
                            "-1 100 42949671", "100 81 100"}) {
        std::string set;
        std::istringstream(row) >> record(0).tx_power >> rule.power_percent >> set;
        if (rule.power_percent == 81) write("/tmp/factory_default_mode", "on");
        EXPECT_EQ(harness::kWritten + set + "\n", apply(0));
        const char* const percentage = set == "100" ? "PERCENTAGEenable=0" : "PERCENTAGEenable=1";
        expect_keys(0, {"TxPower=" + set, percentage});
    }
}

TEST_F(ProfileKeys, CalibrationOverrideListsTheEntriesInUse) {
    auto& table = host().regulations.emplace_back().eeprom.emplace();
    const struct {
        regulated_eeprom_entry entry;
        int count;
        const char* text;
    } kRows[] = {
        {{0, 1, 2},          0,  ""                  },
        {{1, 255, 0},        32, "FF:00,"            },
        {{-1, 1, 256},       32, "01:100,"           },
        {{1, -1, INT32_MIN}, 14, "FFFFFFFF:80000000,"}, // no more fit into 255
    };
    for (const auto& [entry, count, text] : kRows) {
        std::string line = "EEPROM_OVERRIDE=";
        for (int i = 0; i < count; ++i) line += text;
        table.fill(entry);
        apply(0);
        expect_keys(0, {line});
    }
    table = {
        {{1, 0, 0}, {0, 9, 9}, {256, 0, 5}, {0, 9, 9}, {-1, 16, 0}}
    };
    apply(0);
    expect_keys(0, {"EEPROM_OVERRIDE=00:00,00:05,10:00,"});
    write("/tmp/factory_default_mode", "on");
    apply(0);
    expect_keys(0, {"EEPROM_OVERRIDE"});
}

// The MAC access control.
class AccessKeys : public harness::SampleRadios {
protected:
    // Applies so many entries, of which so many are listed.
    void expect_list(size_t count, size_t listed) {
        host().mac_filters[0].entries.assign(count, board::filter_entry("00:1a:ff:00:00:0e"));
        if (count != 0) host().mac_filters[0].entries[0].inactive = count < 10 ? 256 : -1;
        std::string line = "AccessControlList0=";
        for (size_t i = 0; i < listed; ++i) line += "00:1A:FF:00:00:0E;";
        apply(0);
        expect_keys(0, {line});
    }
};

TEST_F(AccessKeys, ListIsCutAfter227Addresses) {
    const std::string overflow = "syslog 1 \"Error:MAC Buf Overflow : 4086\"\n";
    host().max_mac_filter = 500;
    for (const size_t listed : {0u, 226u, 227u}) {
        expect_list(listed == 0 ? 0 : listed + 1, listed);
        EXPECT_EQ(listed < 227 ? "" : overflow, journal_text("syslog"));
    }
    expect_list(229, 227);
    host().max_mac_filter = 5;  // the host hands out no more
    expect_list(9, 4);
}

// The second radio ships with AccessPolicy0=7 and an address of BSS 1.
TEST_F(AccessKeys, WithoutMemoryStayForThatBssAlone) {
    radio(1).bss_count = 3;
    fail_nth("malloc", 2);
    apply(1);
    EXPECT_EQ("syslog 1 \"mtk_macauth_profile_update: malloc failed\\n\"\n",
              journal_text("syslog"));
    expect_keys(1,
                {"AccessControlList0=", "AccessPolicy0=0", "AccessControlList1=00:00:00:00:00:01;",
                 "AccessPolicy1", "AccessControlList2=", "AccessPolicy2=0"});
}

TEST_F(AccessKeys, WithoutATableAreEmpty) {
    static mac_filter_table negative = {-1, 0};
    const auto no_table =
        +[](uint32_t wl_index, int) { return wl_index == 0x10000 ? nullptr : &negative; };
    const harness::LibraryHook hook(HOST_HOOK(macdb_read, no_table));
    const harness::LibraryHook free_hook(
        "macdb_free", +[](mac_filter_table*) {});
    radio(1).bss_count = 2;
    host().mac_filters[0x10001].policy = 1;
    apply(1);
    expect_keys(1, {"AccessControlList0=", "AccessControlList1=", "AccessPolicy1=2"});
    host().easymesh = 2;
    host().mac_filters[0x10001].policy = 0;
    apply(1);
    expect_keys(1, {"AccessPolicy1=2"});
}

}  // namespace
