// Radio services, as whole journals.
#include "live/interfaces.h"
#include "platform/wireless.h"
#include "support/driver.h"

namespace {

using harness::Lines;

constexpr const char* kPins = "/sys/devices/platform/10005000.pinctrl/mt_gpio";

class Services : public harness::Driver {
protected:
    static Lines snooping(const std::string& ifname, const std::string& enable) {
        const std::string set = "$2 /sbin/iwpriv " + ifname + " set ";
        return {set + "IgmpSnEnable=" + enable, set + "IgmpAdd=01:00:5e:00:00:fb",
                set + "IgmpAdd=01:00:5e:7f:ff:fa"};
    }
    void add_radio(const std::string& prefix) {
        std::string file = harness::kL1Profile;
        for (size_t at = 0; (at = file.find("=rai", at)) != file.npos;)
            file.replace(at, 4, '=' + prefix);
        write_l1profile(file);
        host().radios[1].main_ifname = prefix + '0';
        host().radios[1].bss_prefix = prefix;
    }
    void use_8021x(size_t radio) { host().radios[radio].bss[1].auth_mode = WIRELESS_AUTH_WPA2; }
    static std::string told(const std::string& ifname) {
        return "restart_1x_daemon : " + ifname + '\n';
    }
};

TEST_F(Services, SwitchIgmpSnoopingOnEveryBss) {
    for (const int enable : {0, 1, -5}) {
        clear_journal();
        EXPECT_EQ(0, wireless_set_igmpsnoop("rai0", enable));
        Lines lines = snooping("rai0", std::to_string(enable));
        for (const auto& line : snooping("rai1", std::to_string(enable))) lines.push_back(line);
        EXPECT_EQ(lines, journal());
    }
    clear_journal();
    host().radios[0].bss_count = 0;
    EXPECT_EQ(0, wireless_set_igmpsnoop("ra0", 1));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Services, RestartTheAuthenticatorsOfTheRadios) {
    use_8021x(1);
    EXPECT_EQ(0, wireless_restart_8021xd());
    EXPECT_EQ(told("ra0") + told("rai0"), err());
    EXPECT_EQ(
        (Lines{"$2 killall rt2860apd", "wireless_set_radius_iptables ra0 2", "$2 killall rtinicapd",
               "$2 rtinicapd", "wireless_set_radius_iptables rai0 2"}),
        journal());
}

TEST_F(Services, KnowTheAuthenticatorByTheMainInterface) {
    host().wl_modes = {1};
    for (const auto& [prefix, daemon] : {
             std::pair("ra", "rt2860apd"), {"rae", "rtwifi3apd" },
               {"rax", "rt2860apd_x"}
    }) {
        add_radio(prefix);
        use_8021x(1);
        clear_journal();
        EXPECT_EQ(0, wireless_restart_8021xd());
        const std::string ifname = prefix + std::string("0");
        EXPECT_EQ(told(ifname), err());
        EXPECT_EQ((Lines{std::string("$2 killall ") + daemon, std::string("$2 ") + daemon,
                         "wireless_set_radius_iptables " + ifname + " 2"}),
                  journal());
    }
    add_radio("wlan");
    clear_journal();
    EXPECT_EQ(0, wireless_restart_8021xd());
    EXPECT_EQ(told("wlan0"), err());
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Services, RestartBandSteeringWhereItRuns) {
    EXPECT_EQ(0, wireless_restart_bandstrg());
    host().band_steering = 1;
    EXPECT_EQ(0, wireless_restart_bandstrg());
    EXPECT_EQ((Lines{"$2 killall bndstrg", "$2 killall bndstrg", "$2 /bin/bndstrg "}), journal());
}

TEST_F(Services, LightTheLedOfARadio) {
    for (const auto& [ifname, on, line] : {
             std::tuple("ra0", 1, "out 21 0"), {"ra1",  0,  "out 21 1"},
                {"rai0", -9, "out 22 0"}
    }) {
        write(kPins, "");
        EXPECT_EQ(0, platform_wireless_set_led(ifname, on));
        EXPECT_EQ(line, read(kPins));
    }
    write(kPins, "");
    host().radios[0].led_gpio = -1;
    EXPECT_EQ(0, platform_wireless_set_led("ra0", 1));
    EXPECT_EQ("", read(kPins));
}

TEST_F(Services, PutTheVendorElementIntoTheBeacons) {
    objects["ra1 8ef0"];
    EXPECT_EQ(0, wireless_update_beacon_kdx_ie("ra1"));
    EXPECT_EQ(0, memcmp(&host().element, payload.data(), 32));
    EXPECT_EQ(-1, wireless_update_beacon_kdx_ie("ra0"));
    EXPECT_EQ(-1, wireless_update_beacon_kdx_ie("ra9"));
    requests.clear();
    EXPECT_EQ(0, wireless_update_beacon_kdx_ie_all());  // whatever the driver says
    Lines names;
    for (const auto& request : requests)
        names.emplace_back(reinterpret_cast<const char*>(request.data()));
    EXPECT_EQ((Lines{"ra0", "ra1", "ra2", "ra3", "rai0", "rai1", "rai2", "rai3"}), names);
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Services, TakeAllRadiosOut) {
    EXPECT_EQ(0, wireless_api_wireless_disable());
    Lines lines;
    for (const auto& [prefix, client] : {
             std::pair("ra", "apcli0"), {"rai", "apclii0"}
    }) {
        for (int bss = 0; bss < 4; ++bss) {
            const std::string ifname = prefix + std::to_string(bss);
            lines.insert(lines.end(), {"$2 /sbin/brctl delif br0 " + ifname, "ifdown " + ifname});
        }
        lines.push_back(std::string("ifdown ") + client);
    }
    EXPECT_EQ(lines, journal());
}

TEST_F(Services, HaveTheHostStoreWhatItHolds) {
    const wireless_conf before = host().radios[1].bss[0];
    EXPECT_EQ(0, platform_wireless_api_apply_mbssid(1));
    EXPECT_EQ(Lines{"set_wireless_conf rai0"}, journal());
    EXPECT_EQ(0, memcmp(&before, &host().radios[1].bss[0], sizeof before));
}

}  // namespace
