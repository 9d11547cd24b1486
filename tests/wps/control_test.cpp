// WPS runs: what the driver is told, in order.
#include "platform/wps.h"
#include "profile/sample_radios.h"
#include "support/driver.h"
#include "support/library_hook.h"

namespace {

using harness::LibraryHook;
using harness::Lines;

class WpsControl : public harness::Driver {
protected:
    // The driver's settings of each interface.
    static Lines settings(const Lines& ifnames, const Lines& texts) {
        Lines lines;
        for (const std::string& ifname : ifnames)
            for (const std::string& text : texts)
                lines.push_back("$ /sbin/iwpriv " + ifname + " set " + text);
        return lines;
    }
    void use_8021x() { host().radios[0].bss[1].auth_mode = WIRELESS_AUTH_WPA2; }
};

const Lines kAll = {"ra0", "rai0"};
const Lines kPrepare = {"WscConfMode=7", "WscV2Support=0", "WscConfStatus=2"};
const Lines kStart = {"WscMode=2", "WscGetConf=1"};

TEST_F(WpsControl, StartsByPushButtonOrPin) {
    const wps_start_request push = {0, 12345670};
    EXPECT_EQ(1, wireless_wps_start("rai0", &push));
    EXPECT_EQ(settings({"rai0"}, kStart), journal());
    for (const int32_t pin : {12345670, -1}) {
        clear_journal();
        const wps_start_request request = {-2, pin};
        EXPECT_EQ(1, wireless_wps_start(nullptr, &request));
        EXPECT_EQ(
            settings(kAll, {"WscMode=1", "WscPinCode=" + std::to_string(pin), "WscGetConf=1"}),
            journal());
    }
}

TEST_F(WpsControl, ArmsOneInterfaceOrAllButPassesOverARadioWith8021x) {
    EXPECT_EQ(0, wireless_prepare_wps("ra1"));
    EXPECT_EQ(settings({"ra1"}, kPrepare), journal());
    clear_journal();
    EXPECT_EQ(0, wireless_prepare_wps(nullptr));
    EXPECT_EQ(settings(kAll, kPrepare), journal());
    clear_journal();
    use_8021x();
    const wps_start_request push = {};
    EXPECT_EQ(0, wireless_prepare_wps("ra0"));
    EXPECT_EQ(1, wireless_wps_start("ra0", &push));
    EXPECT_EQ(Lines{}, journal());
    EXPECT_EQ(0, wireless_prepare_wps(nullptr));
    EXPECT_EQ(settings({"rai0"}, kPrepare), journal());
    clear_journal();
    EXPECT_EQ(1, wireless_wps_start(nullptr, &push));
    EXPECT_EQ(settings({"rai0"}, kStart), journal());
}

TEST_F(WpsControl, StopsAndLeavesAnUnchangedSsid) {
    use_8021x();  // does not matter here
    host().radios[1].bss[0].wps_enable = 0;
    EXPECT_EQ(1, wireless_wps_stop(nullptr));
    EXPECT_EQ((Lines{"$ /sbin/iwpriv ra0 set WscConfMode=6",
                     "$ /sbin/iwpriv rai0 set WscConfMode=0", "signal_start led"}),
              journal());
}

// The driver's text is compared with the stored one, whatever is put back.
TEST_F(WpsControl, PutsAChangedSsidBack) {
    const LibraryHook essid(
        "iwconfig_client_get_essid", +[](const char*, char* text) {
            strcpy(text, "steered");
            return 0;
        });
    host().band_steering_ssid = "steered";
    const std::string too_long(128, '$');  // once it is escaped
    for (const std::string& ssid : Lines{"home 2g", "", too_long, "steered"}) {
        host().band_steering = ssid == "steered";
        harness::put_text(host().radios[0].bss[0].ssid, ssid == "steered" ? "home 2g" : ssid);
        clear_journal();
        EXPECT_EQ(1, wireless_wps_stop("ra0"));
        Lines lines = settings({"ra0"}, {"WscConfMode=6", "SSID=\"" + ssid + '"'});
        if (ssid == too_long) lines.pop_back();
        lines.push_back("signal_start led");
        EXPECT_EQ(lines, journal());
    }
}

TEST_F(WpsControl, HasTheDriverMakeAPin) {
    objects["ra0 0752"] = word(87654325);
    EXPECT_EQ(87654325, wireless_gen_pincode("ra0"));
    EXPECT_EQ(-1, wireless_gen_pincode("rai0"));
    EXPECT_EQ(settings(kAll, {"WscGenPinCode"}), journal());
}

TEST_F(WpsControl, LeavesTheLedToItsService) {
    EXPECT_EQ(0, wireless_update_wps());
    EXPECT_EQ(0, wireless_set_wps_led("ra0", 1));
    EXPECT_EQ(Lines{}, journal());
}

}  // namespace
