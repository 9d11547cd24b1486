// What each setting of the records writes.
#include <cstring>

#include "profile/sample_radios.h"

namespace {

using harness::Lines;
using harness::put_text;
using Conf = wireless_conf;

// One field of each BSS and the keys that follow it. A key without "=" is not in the profile;
// the shipped one has WirelessMode=2, HT_TxStream=9; and ApCliKey1Str=left over.
struct Rule {
    const char* name;
    int32_t Conf::*field;
    std::vector<int32_t> values;
    Lines keys;
};
void PrintTo(const Rule& row, std::ostream* os) {
    *os << row.name;
}

class ProfileRule : public harness::SampleRadios, public testing::WithParamInterface<Rule> {};

TEST_P(ProfileRule, SetsItsKeys) {
    const Rule& row = GetParam();
    radio(0).bss_count = static_cast<int>(row.values.size());
    for (size_t i = 0; i < row.values.size(); ++i) record(0, i).*row.field = row.values[i];
    apply(0);
    expect_keys(0, row.keys);
}

const Rule kRules[] = {
    {"ModeNone",        &Conf::wireless_mode,    {0},           {"BasicRate", "WirelessMode=2"}                            },
    {"ModeBg",          &Conf::wireless_mode,    {1},           {"BasicRate=15", "WirelessMode=0"}                         },
    {"ModeB",           &Conf::wireless_mode,    {2},           {"BasicRate=3", "WirelessMode=1"}                          },
    {"ModeG",           &Conf::wireless_mode,    {3},           {"BasicRate=351", "WirelessMode=4"}                        },
    {"ModeN",           &Conf::wireless_mode,    {4},           {"BasicRate=351", "WirelessMode=6"}                        },
    {"ModeGn",          &Conf::wireless_mode,    {5},           {"BasicRate=351", "WirelessMode=7"}                        },
    {"ModeBgn",         &Conf::wireless_mode,    {6},           {"BasicRate=15", "WirelessMode=9"}                         },
    {"ModeAn",          &Conf::wireless_mode,    {9},           {"BasicRate=15", "WirelessMode=8"}                         },
    {"ModeAc",          &Conf::wireless_mode,    {10},          {"BasicRate=15", "WirelessMode=14"}                        },
    {"ModeAcToo",       &Conf::wireless_mode,    {11},          {"BasicRate=15", "WirelessMode=14"}                        },
    {"Mode12",          &Conf::wireless_mode,    {12},          {"BasicRate", "WirelessMode=2"}                            },
    {"Dfs",             &Conf::dfs_enable,       {1},           {"CountryRegionABand=13", "IEEE80211H=1", "CountryCode=US"}},
    {"Dfs2",            &Conf::dfs_enable,       {2},           {"CountryRegionABand=7", "IEEE80211H=0", "CountryCode="}   },
    {"ExtensionEqual",  &Conf::ext_channel,      {3},           {"HT_EXTCHA=1;1;1;1"}                                      },
    {"ExtensionBelow",  &Conf::ext_channel,      {2},           {"HT_EXTCHA=0;0;0;0"}                                      },
    {"Width0",          &Conf::bandwidth,        {0},           {"VHT_BW=0", "HT_BW=1", "HT_BSSCoexistence=1"}             },
    {"Width20",         &Conf::bandwidth,        {20},          {"VHT_BW=0", "HT_BW=0", "HT_BSSCoexistence=0"}             },
    {"Width40",         &Conf::bandwidth,        {40},          {"VHT_BW=0", "HT_BW=1", "HT_BSSCoexistence=0"}             },
    {"Width80",         &Conf::bandwidth,        {80},          {"VHT_BW=1", "HT_BW=1", "HT_BSSCoexistence=0"}             },
    {"Beams5",          &Conf::beamforming,      {5},           {"ETxBfEnCond=1", "ITxBfEn=0", "MUTxRxEnable=1"}           },
    {"BeamsMore",       &Conf::beamforming,      {-6},          {"ETxBfEnCond=0", "ITxBfEn=1", "MUTxRxEnable=0"}           },
    {"Negative",        &Conf::beacon_period,    {INT32_MIN},   {"BeaconPeriod=-2147483648"}                               },
    {"Streams",         &Conf::stream_count,     {2, 0},        {"HT_TxStream=2;2;", "HT_RxStream=2;2;"}                   },
    {"NoStreams",       &Conf::stream_count,     {0, 2},        {"HT_TxStream=9;", "HT_RxStream"}                          },
    {"NoWmm",           &Conf::wmm_capable,      {0, 1},        {"WmmCapable=0;0;", "APSDCapable=0;0;"}                    },
    {"Isolation",       &Conf::no_forwarding,    {0, 1, 2, 3},  {"NoForwarding=0;1;0;;"}                                   },
    {"IsolationOfOne",  &Conf::no_forwarding,    {-1},          {"NoForwarding="}                                          },
    {"Hidden",          &Conf::ssid_broadcast,   {0, 1},        {"HideSSID=1;0;", "SSID2=net 1", "SSID3"}                  },
    {"Auth0To3",        &Conf::auth_mode,        {0, 1, 2, 3},  {"AuthMode=OPEN;OPEN;SHARED;WEPAUTO;"}                     },
    {"Auth4To7",        &Conf::auth_mode,        {4, 5, 6, 7},  {"AuthMode=WPA;WPAPSK;OPEN;OPEN;"}                         },
    {"Auth8To10",       &Conf::auth_mode,        {8, 9, 10},    {"AuthMode=WPA2;WPA2PSK;WPAPSKWPA2PSK;"}                   },
    {"Auth11On",        &Conf::auth_mode,        {11, 12, -1},  {"AuthMode=WPA1WPA2;OPEN;OPEN;"}                           },
    {"Cipher0To3",      &Conf::encryption,       {0, 1, 2, 3},  {"EncrypType=NONE;WEP;WEP;TKIP;"}                          },
    {"Cipher4On",       &Conf::encryption,       {4, 5, 6, -1}, {"EncrypType=AES;TKIPAES;NONE;NONE;"}                      },
    {"KeyId0To3",       &Conf::encryption,       {0, 1, 2, 3},  {"DefaultKeyID=1;2;3;2;", "Key1Str1"}                      },
    {"KeyId4On",        &Conf::encryption,       {4, 5, 6, -1}, {"DefaultKeyID=2;2;3;4;", "Key1Str4"}                      },
    {"KeyTexts",        &Conf::encryption,       {0, 1, 2, -1}, {"Key4Str3=wep 2 3", "WPAPSK4=psk 3"}                      },
    {"KeyFormat",       &Conf::wep_key_format,   {0, 1, 2},     {"Key1Type=1;0;1;", "Key4Type=1;0;1;"}                     },
    {"RadiusPort",      &Conf::radius_port,      {0, 65535},    {"RADIUS_Port=1812;65535;"}                                },
    {"NoWps",           &Conf::wps_enable,       {0, 1},        {"WscConfMode=0;0;0;0"}                                    },
    {"WpsOfRadius",     &Conf::auth_mode,        {4, 9},        {"WscConfMode=0;0;0;0"}                                    },
    {"WpsBesideRadius", &Conf::auth_mode,        {9, 4},        {"WscConfMode=7;0;0;0"}                                    },
    {"ClientOpen",      &Conf::apcli_encryption, {0},           {"ApCliEncrypType=NONE", "ApCliDefaultKeyID"}              },
    {"ClientWep",       &Conf::apcli_encryption, {2},           {"ApCliKey4Type=0", "ApCliWPAPSK"}                         },
    {"ClientTkip",      &Conf::apcli_encryption, {3},           {"ApCliEncrypType=TKIP", "ApCliDefaultKeyID=2"}            },
    {"ClientAes",       &Conf::apcli_encryption, {4},           {"ApCliEncrypType=AES", "ApCliKey1Type"}                   },
    {"ClientOther",     &Conf::apcli_encryption, {-1},          {"ApCliEncrypType", "ApCliKey1Str=left over"}              },
};
INSTANTIATE_TEST_SUITE_P(, ProfileRule, testing::ValuesIn(kRules), harness::CaseName());

class ProfileKeys : public harness::SampleRadios {};

TEST_F(ProfileKeys, CountryIsJapanInTwoCapitals) {
    for (const std::string country : {"JP", "jp", "JPN", "J", "", "US"}) {
        put_text(record(0).country_code, country);
        apply(0);
        expect_keys(0, {country == "JP" ? "CountryRegion=5" : "CountryRegion=1"});
    }
}

TEST_F(ProfileKeys, RadiusServerIsCutWhereItsEntryEnds) {
    const std::string longest(30, '1');
    for (const size_t length : {30u, 31u, 32u}) {
        put_text(record(0).radius_server, std::string(length, '1'));
        apply(0);
        expect_keys(0, {"RADIUS_Server=" + longest + ';'});
    }
}

TEST_F(ProfileKeys, TextsMayFillTheirFields) {
    Conf& conf = record(0);
    const auto full = [](const char* key, size_t size) { return key + std::string(size, 'x'); };
    for (const std::span<char> field : std::initializer_list<std::span<char>>{
             conf.ssid, conf.wep_key[3], conf.wpa_psk, conf.apcli_ssid, conf.apcli_bssid,
             conf.apcli_wep_key[3], conf.apcli_wpa_psk, conf.radius_key, conf.country_code})
        std::ranges::fill(field, 'x');
    conf.dfs_enable = 1;
    conf.encryption = conf.apcli_encryption = WIRELESS_CIPHER_WEP;
    apply(0);
    expect_keys(0, {full("SSID1=", 128), full("Key4Str1=", 27), full("WPAPSK1=", 108),
                    full("ApCliSsid=", 128), full("ApCliBssid=", 20), full("ApCliKey4Str=", 27),
                    full("RADIUS_Key1=", 128), full("CountryCode=", 8), "Key3Str1=wep 0 2"});
    conf.apcli_encryption = WIRELESS_CIPHER_AES;
    apply(0);
    expect_keys(0, {full("ApCliWPAPSK=", 108)});
}

TEST_F(ProfileKeys, OfARadioWithoutAPathGoNowhere) {
    write_l1profile("INDEX0_main_ifname=ra0\nINDEX0_ext_ifname=ra\nINDEX0_apcli_ifname=apcli\n");
    EXPECT_EQ("WL_MODE: 0 Profile Name : \nTx Power for Channel 3 -> 60\n", apply(0));
    EXPECT_EQ(golden("shipped_2g.dat"), read(harness::kProfilePath[0]));
}

TEST_F(ProfileKeys, PowerIsScaledByTheLimit) {
    // Wanted, limit, factory test mode, set.
    const std::tuple<int32_t, int, bool, std::string> kRows[] = {
        {100, 80,  false, "80"      },
        {100, -1,  false, "100"     },
        {33,  50,  false, "16"      },
        {100, 0,   false, "0"       },
        {50,  200, false, "100"     },
        {-1,  100, false, "42949671"},
        {100, 80,  true,  "100"     },
    };
    board::Regulation& rule = host().regulations.emplace_back();
    for (const auto& [wanted, limit, factory_test, set] : kRows) {
        rule.power_percent = limit;
        if (factory_test) write("/tmp/factory_default_mode", "on");
        record(0).tx_power = wanted;
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
    write("/tmp/factory_default_mode", "on");
    apply(0);
    expect_keys(0, {"EEPROM_OVERRIDE"});
}

}  // namespace
