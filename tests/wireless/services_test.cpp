// Radio services, as whole journals.
#include "board/model/interfaces.h"
#include "board/store/journal.h"
#include "platform/wps.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/driver.h"
#include "tests/support/library_hook.h"

namespace {

using harness::kPinPath;
using harness::rows;

class Services : public harness::Driver {};

TEST_F(Services, SwitchIgmpSnoopingOnEveryBss) {
    for (const int enable : {0, -5}) {
        EXPECT_EQ(0, wireless_set_igmpsnoop("rai0", enable));
        std::string lines;
        for (const std::string set :
             {"$2 /sbin/iwpriv rai0 set Igmp", "$2 /sbin/iwpriv rai1 set Igmp"})
            lines += set + "SnEnable=" + std::to_string(enable) + '\n' + set +
                     "Add=01:00:5e:00:00:fb\n" + set + "Add=01:00:5e:7f:ff:fa\n";
        EXPECT_EQ(lines, taken());
    }
    host().radios[0].bss_count = 0;
    EXPECT_EQ(0, wireless_set_igmpsnoop("ra0", 1));
    EXPECT_EQ("", taken());
}

// The second radio's main interface says which it is; only that radio has 802.1X.
TEST_F(Services, RestartTheAuthenticatorsOfTheRadios) {
    host().radios[1].bss[1].auth_mode = WIRELESS_AUTH_WPA2;
    for (const auto& [prefix, daemon] :
         rows<std::string, std::string>("rai rtinicapd  rae rtwifi3apd  rax rt2860apd_x  wlan -")) {
        const std::string ifname = prefix + '0';
        write_l1profile("INDEX0_main_ifname=ra0\nINDEX1_main_ifname=" + ifname +
                        "\nINDEX1_ext_ifname=" + prefix + '\n');
        host().radios[1].main_ifname = ifname;
        host().radios[1].bss_prefix = prefix;
        EXPECT_EQ(0, wireless_restart_8021xd());
        const std::string report = "err restart_1x_daemon : ";
        std::string lines = report + "ra0\n$2 killall rt2860apd\n" +
                            "wireless_set_radius_iptables ra0 2\n" + report + ifname + '\n';
        if (daemon != "-")
            lines += "$2 killall " + daemon + "\n$2 " + daemon + "\nwireless_set_radius_iptables " +
                     ifname + " 2\n";
        EXPECT_EQ(lines, taken());
    }
}

TEST_F(Services, RestartBandSteeringWhereItRuns) {
    EXPECT_EQ(0, wireless_restart_bandstrg());
    host().band_steering = 1;
    EXPECT_EQ(0, wireless_restart_bandstrg());
    EXPECT_EQ("$2 killall bndstrg\n$2 killall bndstrg\n$2 /bin/bndstrg \n", taken());
}

TEST_F(Services, LightTheLedOfARadio) {
    for (const auto& [ifname, on, pin, level] :
         rows<std::string, int, std::string, std::string>("ra0 1 21 0  ra1 0 21 1  rai0 -9 22 0")) {
        write(kPinPath, "");
        EXPECT_EQ(0, platform_wireless_set_led(ifname.c_str(), on));
        EXPECT_EQ("out " + pin + ' ' + level, read(kPinPath));
    }
    host().radios[0].led_gpio = 0;
    EXPECT_EQ(0, platform_wireless_set_led("ra0", 256));
    EXPECT_EQ("out 0 0", read(kPinPath));
    write(kPinPath, "");
    host().radios[0].led_gpio = -1;
    EXPECT_EQ(0, platform_wireless_set_led("ra0", 1));
    EXPECT_EQ("", read(kPinPath));
}

TEST_F(Services, PutTheVendorElementIntoTheBeacons) {
    objects["ra1 8ef0"];
    EXPECT_EQ(0, wireless_update_beacon_kdx_ie("ra1"));
    EXPECT_EQ(0, memcmp(&host().element, payload.data(), 32));
    EXPECT_EQ(-1, wireless_update_beacon_kdx_ie("ra0"));
    EXPECT_EQ(-1, wireless_update_beacon_kdx_ie("ra9"));
    requests.clear();
    EXPECT_EQ(0, wireless_update_beacon_kdx_ie_all());  // whatever the driver says
    std::string names;
    for (const auto& request : requests)
        names += reinterpret_cast<const char*>(request.data()) + std::string(" ");
    EXPECT_EQ("ra0 ra1 ra2 ra3 rai0 rai1 rai2 rai3 ", names);
    EXPECT_EQ("", taken());
}

TEST_F(Services, TakeAllRadiosOut) {
    EXPECT_EQ(0, wireless_api_wireless_disable());
    std::string lines;
    for (const auto& [ifname, bridged] : rows<std::string, bool>(
             "ra0 1 ra1 1 ra2 1 ra3 1 apcli0 0 rai0 1 rai1 1 rai2 1 rai3 1 apclii0 0"))
        lines += (bridged ? "$2 /sbin/brctl delif br0 " + ifname + '\n' : "") + "ifdown " + ifname +
                 '\n';
    EXPECT_EQ(lines, taken());
}

TEST_F(Services, SetAPowerOfAtMost100AndResetCounters) {
    for (const auto& [percent, set] : rows<int, std::string>("150 100 100 100 99 99 -5 -5")) {
        EXPECT_EQ(0, rt61_wireless_api_set_txpower("ra0", percent));
        EXPECT_EQ("$ /sbin/iwpriv ra0 set TxPower=" + set + '\n', taken());
    }
    EXPECT_EQ(0, rt61_wireless_api_clear_station_info("ra1"));
    EXPECT_EQ("$ /sbin/iwpriv ra1 set ResetCounter=1\n", taken());
}

TEST_F(Services, HaveTheHostStoreWhatItHolds) {
    const wireless_conf before = host().radios[1].bss[0];
    EXPECT_EQ(0, platform_wireless_api_apply_mbssid(1));
    EXPECT_EQ("set_wireless_conf rai0\n", taken());
    EXPECT_EQ(0, memcmp(&before, &host().radios[1].bss[0], sizeof before));
}

// MAC access control at run time: into the driver and into the profile.
class AccessControl : public harness::SampleRadios {
protected:
    AccessControl() {
        host().journal_profile_edits = true;
        radio(1).bss_count = 2;
    }
    // The whole journal of an apply to rai1.
    void expect_applied(const std::string& list, const std::string& last = "",
                        const std::string& message = "") {
        clear_journal();
        EXPECT_EQ(0, wireless_apply_macauth(0x10001));
        EXPECT_EQ("$2 /sbin/iwpriv rai1 set ACLClearAll=1\n" + message +
                      "$2 /sbin/iwpriv rai1 set ACLAddEntry=\"" + list +
                      "\"\nprofile /etc/wireless/radio1.dat store " +
                      board::quote("AccessControlList1=" + list) + '\n' + last,
                  journal_text());
    }
    board::MacFilter& filter = host().mac_filters[0x10001];
};

TEST_F(AccessControl, SetsTheDriversWordForAPolicy) {
    for (const auto& [radio, bss, policy, ifname, word] :
         rows<uint32_t, uint32_t, int, std::string, std::string>(
             "1 2 1 rai2 2  0 0 2 ra0 1  0 3 0 ra3 0  0 1 5 ra1 0")) {
        clear_journal();
        EXPECT_EQ(0, wireless_macauth_set_policy(radio << 16 | bss, policy));
        EXPECT_EQ("$ /sbin/iwpriv " + ifname + " set AccessPolicy=" + word +
                      "\nprofile /etc/wireless/radio" + std::to_string(radio) +
                      ".dat store AccessPolicy" + std::to_string(bss) + '=' + word + '\n',
                  journal_text());
    }
}

TEST_F(AccessControl, ReplacesTheListsOfTheDriverAndTheProfile) {
    fail_nth("malloc", 1);
    EXPECT_EQ(0, wireless_apply_macauth(0x10001));
    EXPECT_EQ("$2 /sbin/iwpriv rai1 set ACLClearAll=1\n", journal_text());
    filter.entries.clear();
    expect_applied("");
    filter.entries = {board::filter_entry("00:1a:ff:00:00:01"),
                      board::filter_entry("00:1a:ff:00:00:02"),
                      board::filter_entry("00:1a:ff:00:00:03")};
    filter.entries[1].inactive = 1;
    expect_applied("00:1A:FF:00:00:01;00:1A:FF:00:00:03;");
    host().max_mac_filter = 500;  // cut, the list still fits into one command
    filter.entries.assign(500, board::filter_entry("00:00:00:00:00:00"));
    std::string full;
    for (int i = 0; i < 227; ++i) full += "00:00:00:00:00:00;";
    expect_applied(full, "", "syslog 1 \"Error:MAC Buf Overflow : 4086\"\n");
}

TEST_F(AccessControl, TellsTheWanOfAn8021xBssWithAPolicy) {
    for (const auto& [auth_mode, policy, told] : {
             std::tuple(WIRELESS_AUTH_WPA2PSK, 1, ""),
             {WIRELESS_AUTH_WPA2, 0, ""            },
             {WIRELESS_AUTH_WPA2, 1, "signal_wan\n"}
    }) {
        record(1, 1).auth_mode = auth_mode;
        filter.policy = policy;
        expect_applied("", told);
    }
    radio(1).bss_count = 1;  // no longer configured, and not asked about
    const harness::LibraryHook hook(
        "wireless_check_8021x_enabled", +[](const wireless_conf*) { return 1; });
    expect_applied("");
}

}  // namespace
