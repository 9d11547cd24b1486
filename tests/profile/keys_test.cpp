// What each setting of the records writes.
#include <sstream>

#include "src/host/host.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/library_hook.h"

namespace {

using harness::Lines;
using harness::put_text;
using Conf = wireless_conf;

class ProfileKeys : public harness::SampleRadios {
protected:
    // A case: the field's value in each BSS, then the keys that follow. A key without "=" is not
    // in the profile; the shipped one has WirelessMode=2, HT_TxStream=9; and
    // ApCliKey1Str=left over.
    void expect_cases(int32_t Conf::*field, std::initializer_list<const char*> cases) {
        const board::State sample = host();
        for (const char* text : cases) {
            SCOPED_TRACE(text);
            host() = sample;
            ship_profiles();
            std::istringstream row(text);
            std::string word;
            std::getline(row, word, '|');
            std::istringstream values(word);
            size_t bss = 0;
            for (int value; values >> value; ++bss) record(0, bss).*field = value;
            radio(0).bss_count = static_cast<int>(bss);
            apply(0);
            while (std::getline(row, word, '|')) expect_keys(0, {word});
        }
        host() = sample;
    }
};

TEST_F(ProfileKeys, OfTheRadioFollowItsRecord) {
    expect_cases(&Conf::wireless_mode,
                 {"0|BasicRate|WirelessMode=2", "1|BasicRate=15|WirelessMode=0",
                  "2|BasicRate=3|WirelessMode=1", "3|BasicRate=351|WirelessMode=4",
                  "4|BasicRate=351|WirelessMode=6", "5|BasicRate=351|WirelessMode=7",
                  "6|BasicRate=15|WirelessMode=9", "9|BasicRate=15|WirelessMode=8",
                  "10|BasicRate=15|WirelessMode=14", "11|BasicRate=15|WirelessMode=14",
                  "12|BasicRate|WirelessMode=2"});
    expect_cases(&Conf::dfs_enable, {"1|CountryRegionABand=13|IEEE80211H=1|CountryCode=US",
                                     "2|CountryRegionABand=7|IEEE80211H=0|CountryCode="});
    expect_cases(&Conf::ext_channel, {"3|HT_EXTCHA=1;1;1;1", "2|HT_EXTCHA=0;0;0;0"});
    expect_cases(
        &Conf::bandwidth,
        {"0|VHT_BW=0|HT_BW=1|HT_BSSCoexistence=1", "20|VHT_BW=0|HT_BW=0|HT_BSSCoexistence=0",
         "40|VHT_BW=0|HT_BW=1|HT_BSSCoexistence=0", "80|VHT_BW=1|HT_BW=1|HT_BSSCoexistence=0"});
    expect_cases(&Conf::beamforming, {"5|ETxBfEnCond=1|ITxBfEn=0|MUTxRxEnable=1",
                                      "-6|ETxBfEnCond=0|ITxBfEn=1|MUTxRxEnable=0"});
    expect_cases(&Conf::beacon_period, {"-2147483648|BeaconPeriod=-2147483648"});
    expect_cases(&Conf::wps_enable, {"0 1|WscConfMode=0;0;0;0"});
    expect_cases(
        &Conf::apcli_encryption,
        {"0|ApCliEncrypType=NONE|ApCliDefaultKeyID", "2|ApCliKey4Type=0|ApCliWPAPSK",
         "3|ApCliEncrypType=TKIP|ApCliDefaultKeyID=2", "4|ApCliEncrypType=AES|ApCliKey1Type",
         "-1|ApCliEncrypType|ApCliKey1Str=left over"});
}

TEST_F(ProfileKeys, OfTheBsssFollowTheirRecords) {
    expect_cases(&Conf::stream_count,
                 {"2 0|HT_TxStream=2;2;|HT_RxStream=2;2;", "0 2|HT_TxStream=9;|HT_RxStream"});
    expect_cases(&Conf::wmm_capable, {"0 1|WmmCapable=0;0;|APSDCapable=0;0;"});
    expect_cases(&Conf::no_forwarding, {"0 1 2 3|NoForwarding=0;1;0;;", "-1|NoForwarding="});
    expect_cases(&Conf::ssid_broadcast, {"0 1|HideSSID=1;0;|SSID2=net 1|SSID3"});
    expect_cases(&Conf::auth_mode,
                 {"0 1 2 3|AuthMode=OPEN;OPEN;SHARED;WEPAUTO;",
                  "4 5 6 7|AuthMode=WPA;WPAPSK;OPEN;OPEN;|WscConfMode=0;0;0;0",
                  "8 9 10|AuthMode=WPA2;WPA2PSK;WPAPSKWPA2PSK;", "9 4|WscConfMode=7;0;0;0",
                  "11 12 -1|AuthMode=WPA1WPA2;OPEN;OPEN;"});
    expect_cases(
        &Conf::encryption,
        {"0 1 2 3|EncrypType=NONE;WEP;WEP;TKIP;|DefaultKeyID=1;2;3;2;|Key1Str1|Key4Str3=wep 2 3",
         "4 5 6 -1|EncrypType=AES;TKIPAES;NONE;NONE;|DefaultKeyID=2;2;3;4;|Key1Str4|WPAPSK4=psk "
         "3"});
    expect_cases(&Conf::wep_key_format, {"0 1 2|Key1Type=1;0;1;|Key4Type=1;0;1;"});
    expect_cases(&Conf::radius_port, {"0 65535|RADIUS_Port=1812;65535;"});
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
        if (count != 0) host().mac_filters[0].entries[0].inactive = -1;
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
    const auto no_table = +[](uint32_t, int) -> mac_filter_table* { return nullptr; };
    const harness::LibraryHook hook(HOST_HOOK(macdb_read, no_table));
    radio(1).bss_count = 2;
    host().mac_filters[0x10001].policy = 1;
    apply(1);
    expect_keys(1, {"AccessControlList1=", "AccessPolicy1=2"});
}

}  // namespace
