// How a radio runs: channel, radar detection, the repeater link.
#include <cstring>

#include "board/model/interfaces.h"
#include "platform/wireless.h"
#include "src/host/host.h"
#include "tests/support/driver.h"

namespace {

using harness::rows;
using Words = std::array<int32_t, 5>;

class Status : public harness::Driver {
protected:
    Status() {
        on_command = [this](const std::string& command) {
            if (const size_t at = command.find("/tmp/"); at != command.npos && !statistics.empty())
                write(command.substr(at), statistics);
            return 1;  // nobody asks
        };
    }
    static Words current(const char* ifname) {
        channel_spec spec = {-7, -7, -7, -7, -7};
        EXPECT_EQ(0, wireless_api_get_current_channelspec(ifname, &spec));
        return {spec.channel, spec.ext_channel, spec.frequency_mhz, spec.reserved,
                spec.bandwidth_mhz};
    }
    // Whether the radar detection was found, and what is known of it.
    static std::array<int32_t, 4> radar(const std::string& ifname = "rai0") {
        dfs_info info = {-7, -7, -7};
        const int result = wireless_get_dfs_info(ifname.c_str(), &info);
        return {result, info.rd_mode, info.channel_moving_time, info.remaining};
    }
    wireless_conf& record = host().radios[0].bss[0];
    std::string statistics;  // empty: the command leaves no file
};

// The radio is on automatic, and on {6, 10, 2437, 0, 40} then.
TEST_F(Status, TakesTheSecondChannelFromTheDriver) {
    board::set_interface_up("ra0", true);
    EXPECT_EQ((Words{6, 10, 2437, 0, 40}), current("ra0"));  // it refuses
    for (const auto& [mhz, channel] : rows<uint32_t, int>(
             "2412 1  2484 15  2402 10  2398 10  2397 -2  5000 518  5001 0  65535 12107  0 -481")) {
        objects["ra0 0974"] = word(mhz).substr(0, 2);
        EXPECT_EQ((Words{6, channel, 2437, 0, 40}), current("ra0")) << mhz;
    }
}

TEST_F(Status, OfARadioThatIsDownIsItsConfiguration) {
    objects["ra0 0974"] = word(5210);
    record.channel = 1;
    record.ext_channel = 2;
    memcpy(record.channel_rest, Words{3, 4, 5}.data(), 12);
    record.bandwidth = 40;
    EXPECT_EQ((Words{1, 2, 3, 4, 40}), current("ra0"));
    EXPECT_TRUE(requests.empty());
}

TEST_F(Status, Tells80MhzOnlyOfTheModesThatHaveIt) {
    record.bandwidth = 80;
    objects["ra0 0974"] = word(2412);
    for (const bool up : {true, false}) {
        board::set_interface_up("ra0", up);
        for (const auto& [mode, width] :
             rows<int, int>("1 20 2 20 3 20  4 40 5 40 6 40 9 40  0 80 7 80 8 80 10 80 11 80")) {
            record.wireless_mode = mode;
            const Words words = current("ra0");
            EXPECT_EQ((Words{words[0], words[0], words[2], words[3], width}), words) << mode;
        }
    }
}

TEST_F(Status, ReadsRadarDetection) {
    const std::string key = "Dot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount";
    for (const auto& [values, mode, moving_time, remaining] : rows<std::string, int, int, int>(
             "=2,60,15 2 60 45  =1,60,90 1 60 0  =0,60,60 0 60 0  =3,60,0 -7 60 60 "
             "=-1,60,0 -7 60 60  =2,60 2 60 0  =2 2 0 -7  = -7 0 -7  =2,,60,,15 2 60 45  "
             "=,,2,60,15 2 60 45  =2,60,, 2 60 0  =,2, 2 0 -7  =,, -7 0 -7"))
        for (const std::string& end : harness::Lines{"", "\n", "\n" + key + "=1,9,1\n"}) {
            statistics = "A=1\n\n" + key + values + end;
            EXPECT_EQ((std::array{1, mode, moving_time, remaining}), radar()) << values;
            EXPECT_EQ("$ /sbin/iwpriv rai0 stat > /tmp/rai0.dfsinfo\n", taken());
            EXPECT_EQ(statistics, read("/tmp/rai0.dfsinfo"));
        }
    constexpr std::array kUntouched = {0, -7, -7, -7};
    for (const std::string& text : {key, "A=" + key + "=2,60,15", key + " =2,60,15",
                                    key.substr(1) + "=2,60,15", std::string()}) {
        statistics = text + '\n';
        EXPECT_EQ(kUntouched, radar()) << text;
    }
    taken();
    statistics = key + "=2,60,15\n";
    EXPECT_EQ(kUntouched, radar("ra0"));
    EXPECT_EQ("", taken());
}

TEST_F(Status, WithoutStatisticsIsReported) {
    char value[32] = "untouched";
    EXPECT_EQ((std::array{0, -7, -7, -7}), radar());
    EXPECT_EQ("fopen /sbin/iwpriv rai0 stat > /tmp/rai0.dfsinfo fail", err());
    EXPECT_EQ(0, mt762x_get_apcli_status("apclii0", value, value));
    EXPECT_EQ("popen /sbin/iwpriv apclii0 stat > /tmp/apclii0.stat fail", err());
    taken();
    statistics = "Dot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount=2\nAp Client Status=1,2\n";
    for (const std::string& name : {std::string("../etc/x"), std::string(128, 'n')}) {
        EXPECT_EQ((std::array{0, -7, -7, -7}), radar(name));
        EXPECT_EQ(0, mt762x_get_apcli_status(name.c_str(), value, value));
    }
    EXPECT_NE("", err());
    EXPECT_EQ("", taken());
    EXPECT_STREQ("untouched", value);
}

TEST_F(Status, ReadsTheClientLine) {
    const std::string x31(31, 'x');
    for (const auto& [rest, result, first, second] :
         rows<std::string, int, std::string, std::string>(
             "=1,-62 1 1 -62  =1,-62,5=6 1 1 -62,5=6  =1 0 1 (none)  =1, 0 1 (none) "
             "= 0 (none) (none)  2=1,-62 0 (none) (none)  =" +
             x31 + "a," + x31 + "b 1 " + x31 + ' ' + x31)) {
        statistics = "x=y\nAp Client=9,9\nAp Client Status" + rest + "\nx=z\n";
        char texts[2][32] = {"(none)", "(none)"};
        EXPECT_EQ(result, mt762x_get_apcli_status("apclii0", texts[0], texts[1])) << rest;
        EXPECT_EQ(first, texts[0]) << rest;
        EXPECT_EQ(second, texts[1]) << rest;
        EXPECT_EQ("$ /sbin/iwpriv apclii0 stat > /tmp/apclii0.stat\n", taken());
        EXPECT_EQ(result, mt762x_get_apcli_status("apclii0", nullptr, nullptr));
        taken();
    }
}

class RepeaterLink : public Status {
protected:
    RepeaterLink() {
        link.ssid = "upstream";
        link.ap_mac = "00:11:22:33:44:55";
        link.channel = up.channel = {36, 42, 5180, 9, 80};
        link.speed_mbps = 866;
        strcpy(up.ssid, "upstream");
        strcpy(up.bssid, "00:11:22:33:44:55");
        memset(&entry, 'x', sizeof entry);
    }
    void expect_link(int result, const ap_entry& expected) {
        EXPECT_EQ(result, wireless_api_get_mbridge_status("apclii0", &entry));
        EXPECT_EQ(0, memcmp(&expected, &entry, sizeof entry));
    }
    board::ClientLink& link = host().radios[1].client;
    ap_entry up = {};
    ap_entry entry;
};

TEST_F(RepeaterLink, IsUpWithOrWithoutStatistics) {
    expect_link(1, up);
    EXPECT_EQ("popen /sbin/iwpriv apclii0 stat > /tmp/apclii0.stat fail", err());
    statistics = "Ap Client Status=1\n";
    expect_link(1, up);
    statistics = "Ap Client Status=1,-62\n";
    up.rssi = -62;
    up.signal = 70;
    expect_link(1, up);
}

TEST_F(RepeaterLink, IsAskedForItsSsidThenItsChannelThenItsAccessPoint) {
    static std::string asked;
    asked.clear();
    const harness::LibraryHook essid(
        HOST_HOOK(iwconfig_client_get_essid,
                  (+[](const char*, char* text) { return *text = 'x', asked += "essid ", 0; })));
    const harness::LibraryHook channel(
        HOST_HOOK(iwconfig_client_get_channel,
                  (+[](const char*, channel_spec*) { return asked += "channel ", 0; })));
    const harness::LibraryHook ap(HOST_HOOK(
        iwconfig_client_get_ap_mac, (+[](const char*, char*) { return asked += "ap", 0; })));
    EXPECT_EQ(0, wireless_api_get_mbridge_status("apclii0", &entry));
    EXPECT_EQ("essid channel ap", asked);
}

TEST_F(RepeaterLink, IsDownWithoutAnAccessPoint) {
    char ssid[64];
    EXPECT_EQ(0, wireless_api_get_ssid("apclii0", ssid));
    EXPECT_STREQ("upstream", ssid);
    EXPECT_EQ(-1, wireless_api_get_ssid("nil0", ssid));
    EXPECT_EQ(866, rt61_get_wireless_link_speed("apclii0"));
    const std::string mac = std::exchange(link.ap_mac, "");
    memset(up.bssid, 0, sizeof up.bssid);
    expect_link(0, up);
    EXPECT_EQ(0, rt61_get_wireless_link_speed("apclii0"));
    link.ap_mac = mac;
    link.ssid = "";
    expect_link(0, {});
    EXPECT_EQ(0, rt61_get_wireless_link_speed("apclii0"));
    EXPECT_EQ("", taken());
}

}  // namespace
