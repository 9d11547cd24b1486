// WPS runs: what the driver is told, in order, its status in two readings, the peer of a run.
#include <regex>

#include "board/model/interfaces.h"
#include "platform/wps.h"
#include "src/host/host.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/driver.h"
#include "tests/support/library_hook.h"

namespace {

using harness::rows;
using namespace std::string_literals;

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
    for (const std::string& ssid : {"home 2g"s, ""s, std::string(128, '$'), "mesh"s}) {
        host().band_steering = ssid == "mesh";
        harness::put_text(host().radios[0].bss[0].ssid, ssid);
        EXPECT_EQ(1, wireless_wps_stop("ra0"));
        const std::string put_back = ssid == "mesh" ? "steered" : ssid;
        const std::string escaped = std::regex_replace(put_back, std::regex("[$]"), "\\$$");
        EXPECT_EQ(
            settings("ra0", {"WscConfMode=6", "SSID=\"" + escaped + '"'}) + "signal_start led\n",
            taken());
    }
}

TEST_F(WpsControl, HasTheDriverMakeAPin) {
    objects["ra0 0752"] = word(87654325);
    EXPECT_EQ(87654325, wireless_gen_pincode("ra0"));
    EXPECT_EQ(-1, wireless_gen_pincode("rai0"));
    EXPECT_EQ(settings("ra0", {"WscGenPinCode"}) + settings("rai0", {"WscGenPinCode"}), taken());
}

class WpsStatus : public harness::Driver {
protected:
    WpsStatus() {
        board::set_interface_up("ra0", true);
        board::set_interface_up("rai0", true);
        memset(&info, 'x', sizeof info);
    }
    void report(const std::string& ifname, uint32_t status) {
        objects[ifname + " 0751"] = word(status);
    }
    static void store(const std::string& key, int state) {
        istatus_set_value_direct(("wps_status." + key).c_str(), std::to_string(state).c_str());
    }
    uint32_t raw = 99;
    wsc_peer_info info;
};

// From a status to a status: the control's state, while the host knows of a run, so that idle
// reads as running, and the peer's.
TEST_F(WpsStatus, ReadsEachDriverStatusAsControlAndAsPeer) {
    store("ra0", 3);
    objects["ra0 075c"] = std::string(200, '\0');
    for (const auto& [first, last, control, peer] : rows<int64_t, int64_t, int, uint32_t>(
             "0 1 3 1  2 2 5 5  3 3 3 2  4 29 3 3  30 33 5 5  34 34 4 4  35 256 3 3 "
             "257 257 3 5  2147483647 2147483647 3 5  2147483648 2147483648 3 3"))
        for (int64_t status = first; status <= last; ++status) {
            SCOPED_TRACE(status);
            report("ra0", static_cast<uint32_t>(status));
            EXPECT_EQ(control, wireless_get_wps_status("ra0", &raw));
            EXPECT_EQ(status, raw);
            EXPECT_EQ(1, apcp_get_wsc_peerinfo_by_ifname("ra0", &info));
            EXPECT_EQ(peer, info.state);
        }
}

TEST_F(WpsStatus, IsTheHostsOwnUnlessItSaysRunning) {
    report("ra0", 34);
    EXPECT_EQ(1, wireless_get_wps_status("ra0", &raw));
    for (const int state : {-7, -1, 0, 1, 2, 4, 5}) {
        store("ra0", state);
        EXPECT_EQ(state == -1 ? 1 : state, wireless_get_wps_status("ra0", &raw));
    }
    EXPECT_TRUE(requests.empty());
    store("ra0", 3);
    EXPECT_EQ(4, wireless_get_wps_status("ra0", nullptr));
    objects.clear();
    EXPECT_EQ(-1, wireless_get_wps_status("ra0", &raw));
    report("ra0", 34);
    board::set_interface_up("ra0", false);
    EXPECT_EQ(3, wireless_get_wps_status("ra0", &raw));
    EXPECT_EQ(99u, raw);
}

TEST_F(WpsStatus, OfAllRadiosIsTheFirstOutcome) {
    constexpr uint32_t kRefused = 1000;
    store("both", 3);
    for (const auto& [first, second, state, read] : rows<uint32_t, uint32_t, int, uint32_t>(
             "1 34 4 34  34 2 4 34  3 2 5 2  0 29 3 29  1 1000 -1 1  1000 34 -1 99")) {
        objects.clear();
        if (first != kRefused) report("ra0", first);
        if (second != kRefused) report("rai0", second);
        raw = 99;
        EXPECT_EQ(state, wireless_get_wps_status(nullptr, &raw));
        EXPECT_EQ(read, raw);
    }
}

TEST_F(WpsStatus, NamesTheFirstConfiguredInterfaceThatIsUp) {
    char name[32] = "untouched";
    report("ra0", 34);
    for (const auto& [up, second, found] :
         rows<bool, uint32_t, std::string>("0 33 untouched  0 34 rai0  1 34 ra0")) {
        board::set_interface_up("ra0", up);
        report("rai0", second);
        EXPECT_EQ(second == 34, wireless_get_wps_configured_ifname(name));
        EXPECT_EQ(found, name);
    }
}

class WpsPeer : public WpsStatus {
protected:
    // Takes a record of these texts, each in its place.
    void expect_texts(const harness::Lines& texts) {
        std::string& bytes = objects["ra0 075c"];
        for (size_t i = 0; i < texts.size(); ++i) {
            bytes += texts[i];
            bytes.resize(i == 0 ? 32 : 64 + 32 * i);
        }
        bytes += "unread!!";
        EXPECT_EQ(1, apcp_get_wsc_peerinfo_by_ifname("ra0", &info));
        const char* const fields[] = {info.device_name, info.manufacturer, info.model_name,
                                      info.model_number, info.serial_number};
        for (size_t i = 0; i < texts.size(); ++i)
            EXPECT_EQ(texts[i].substr(0, 63), std::string(fields[i], strnlen(fields[i], 64)));
    }
};

TEST_F(WpsPeer, IsTakenFromTheDriversRecord) {
    report("ra0", 3);
    expect_texts({"phone", "Maker & Co", "M", "", "0042"});
    EXPECT_EQ(2u, info.state);
    EXPECT_EQ(1'700'000'000u, info.time);
}

TEST_F(WpsPeer, MayFillItsFieldsToTheLastByte) {
    expect_texts({std::string(32, 'd'), std::string(64, 'm'), std::string(32, 'n'),
                  std::string(32, 'u'), std::string(32, 's')});
    EXPECT_EQ("apcp_get_wps_status RT_OID_WSC_QUERY_STATUS failed\n", err());
    EXPECT_EQ(1u, info.state);
}

TEST_F(WpsPeer, MayBeUnknown) {
    report("ra0", 34);
    now = 0x1'2345'6789;
    EXPECT_EQ(0, apcp_get_wsc_peerinfo_by_ifname("ra0", &info));
    EXPECT_EQ("apcp_get_wsc_peerinfo_by_ifname RT_OID_WSC_QUERY_PEER_INFO_ON_RUNNING failed\n",
              err());
    EXPECT_EQ(4u, info.state);
    EXPECT_EQ(0x2345'6789u, info.time);
    EXPECT_EQ(std::string(320, 'x'), std::string(info.manufacturer, 320));
}

}  // namespace
