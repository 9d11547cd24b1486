// WPS runs: what the driver is told, in order.
#include "platform/wps.h"
#include "profile/sample_radios.h"
#include "support/driver.h"
#include "support/library_hook.h"

namespace {

class WpsControl : public harness::Driver {
protected:
    // The driver's settings of an interface.
    static std::string settings(const std::string& ifname, const harness::Lines& texts) {
        std::string lines;
        for (const std::string& text : texts)
            lines += "$ /sbin/iwpriv " + ifname + " set " + text + '\n';
        return lines;
    }
    static std::string prepare(const std::string& ifname) {
        return settings(ifname, {"WscConfMode=7", "WscV2Support=0", "WscConfStatus=2"});
    }
    int32_t& auth_mode = host().radios[0].bss[1].auth_mode;
    const wps_start_request push = {0, 12345670};
    const std::string kStart = settings("rai0", {"WscMode=2", "WscGetConf=1"});
};

TEST_F(WpsControl, StartsByPushButtonOrPin) {
    EXPECT_EQ(1, wireless_wps_start("rai0", &push));
    EXPECT_EQ(kStart, taken());
    for (const int32_t pin : {12345670, -1}) {
        const wps_start_request request = {-2, pin};
        EXPECT_EQ(1, wireless_wps_start(nullptr, &request));
        const harness::Lines texts = {"WscMode=1", "WscPinCode=" + std::to_string(pin),
                                      "WscGetConf=1"};
        EXPECT_EQ(settings("ra0", texts) + settings("rai0", texts), taken());
    }
}

TEST_F(WpsControl, ArmsOneInterfaceOrAllButPassesOverARadioWith8021x) {
    EXPECT_EQ(0, wireless_prepare_wps("ra1"));
    EXPECT_EQ(prepare("ra1"), taken());
    EXPECT_EQ(0, wireless_prepare_wps(nullptr));
    EXPECT_EQ(prepare("ra0") + prepare("rai0"), taken());
    auth_mode = WIRELESS_AUTH_WPA2;
    EXPECT_EQ(0, wireless_prepare_wps("ra0"));
    EXPECT_EQ(1, wireless_wps_start("ra0", &push));
    EXPECT_EQ("", taken());
    EXPECT_EQ(0, wireless_prepare_wps(nullptr));
    EXPECT_EQ(1, wireless_wps_start(nullptr, &push));
    EXPECT_EQ(prepare("rai0") + kStart, taken());
}

TEST_F(WpsControl, StopsAndLeavesAnUnchangedSsid) {
    auth_mode = WIRELESS_AUTH_WPA2;  // does not matter here
    host().radios[1].bss[0].wps_enable = 0;
    EXPECT_EQ(1, wireless_wps_stop(nullptr));
    EXPECT_EQ(settings("ra0", {"WscConfMode=6"}) + settings("rai0", {"WscConfMode=0"}) +
                  "signal_start led\n",
              taken());
}

// The driver's text is compared with the stored one, whatever is put back.
TEST_F(WpsControl, PutsAChangedSsidBack) {
    const harness::LibraryHook essid(
        "iwconfig_client_get_essid", +[](const char*, char* text) {
            strcpy(text, "steered");
            return 0;
        });
    host().band_steering_ssid = "steered";
    const std::string too_long(128, '$');  // once it is escaped
    for (const std::string& ssid : harness::Lines{"home 2g", "", too_long, "steered"}) {
        host().band_steering = ssid == "steered";
        harness::put_text(host().radios[0].bss[0].ssid, ssid == "steered" ? "home 2g" : ssid);
        EXPECT_EQ(1, wireless_wps_stop("ra0"));
        harness::Lines texts = {"WscConfMode=6"};
        if (ssid != too_long) texts.push_back("SSID=\"" + ssid + '"');
        EXPECT_EQ(settings("ra0", texts) + "signal_start led\n", taken());
    }
}

TEST_F(WpsControl, HasTheDriverMakeAPin) {
    objects["ra0 0752"] = word(87654325);
    EXPECT_EQ(87654325, wireless_gen_pincode("ra0"));
    EXPECT_EQ(-1, wireless_gen_pincode("rai0"));
    EXPECT_EQ(settings("ra0", {"WscGenPinCode"}) + settings("rai0", {"WscGenPinCode"}), taken());
}

}  // namespace
