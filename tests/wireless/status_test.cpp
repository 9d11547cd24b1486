// How a radio runs: channel, radar detection, the repeater link.
#include <cstring>

#include "live/interfaces.h"
#include "platform/wireless.h"
#include "support/driver.h"

namespace {

using harness::Lines;
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
    static wireless_conf& record() { return host().radios[0].bss[0]; }

    std::string statistics;  // empty: the command leaves no file
};

// The radio is on automatic, and on {6, 10, 2437, 0, 40} then.
TEST_F(Status, TakesTheSecondChannelFromTheDriver) {
    board::set_interface_up("ra0", true);
    EXPECT_EQ((Words{6, 10, 2437, 0, 40}), current("ra0"));  // it refuses
    for (const auto& [mhz, channel] : {
             std::pair(2412, 1),
             {2484,  15   },
             {2402,  10   },
             {2398,  10   },
             {2397,  -2   },
             {5000,  518  },
             {5001,  0    },
             {5210,  42   },
             {65535, 12107},
             {0,     -481 }
    }) {
        objects["ra0 0974"] = word(static_cast<uint32_t>(mhz)).substr(0, 2);
        EXPECT_EQ((Words{6, channel, 2437, 0, 40}), current("ra0")) << mhz;
    }
}

TEST_F(Status, OfARadioThatIsDownIsItsConfiguration) {
    objects["ra0 0974"] = word(5210);
    record().channel = 1;
    record().ext_channel = 2;
    memcpy(record().channel_rest, Words{3, 4, 5}.data(), 12);
    for (const int32_t bandwidth : {0, 20, 40}) {
        record().bandwidth = bandwidth;
        EXPECT_EQ((Words{1, 2, 3, 4, bandwidth}), current("ra0"));
    }
    EXPECT_TRUE(requests.empty());
}

TEST_F(Status, Tells80MhzOnlyOfTheModesThatHaveIt) {
    record().bandwidth = 80;
    objects["ra0 0974"] = word(2412);
    for (const bool up : {true, false}) {
        board::set_interface_up("ra0", up);
        for (const auto& [mode, width] : {
                 std::pair(1, 20),
                 {2,  20},
                 {3,  20},
                 {4,  40},
                 {5,  40},
                 {6,  40},
                 {9,  40},
                 {0,  80},
                 {7,  80},
                 {8,  80},
                 {10, 80},
                 {11, 80}
        }) {
            record().wireless_mode = mode;
            const Words words = current("ra0");
            EXPECT_EQ((Words{words[0], words[0], words[2], words[3], width}), words) << mode;
        }
    }
}

TEST_F(Status, ReadsRadarDetection) {
    const std::string key = "Dot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount";
    const struct {
        std::string text;
        int result;
        dfs_info info;
    } kRows[] = {
        {key + "=2,60,15\n",                        1, {2, 60, 45} },
        {key + "=1,60,90\n",                        1, {1, 60, 0}  },
        {key + "=0,60,60",                          1, {0, 60, 0}  },
        {key + "=3,60,0\n",                         1, {-7, 60, 60}},
        {key + "=-1,60,0\n",                        1, {-7, 60, 60}},
        {key + "=2,60\n",                           1, {2, 60, 0}  },
        {key + "=2\n",                              1, {2, 0, -7}  },
        {key + "=\n",                               1, {-7, 0, -7} },
        {"A=1\n\n" + key + "=1,9,1\n" + key + "=2", 1, {1, 9, 8}   },
        {key + "\n",                                0, {-7, -7, -7}},
        {"A=" + key + "=2,60,15\n",                 0, {-7, -7, -7}},
        {key + " =2,60,15\n",                       0, {-7, -7, -7}},
        {key.substr(1) + "=2,60,15\n",              0, {-7, -7, -7}},
        {"\n",                                      0, {-7, -7, -7}},
    };
    for (const auto& row : kRows) {
        clear_journal();
        statistics = row.text;
        dfs_info info = {-7, -7, -7};
        EXPECT_EQ(row.result, wireless_get_dfs_info("rai0", &info)) << row.text;
        EXPECT_EQ(0, memcmp(&row.info, &info, sizeof info)) << row.text;
        EXPECT_EQ(Lines{"$ /sbin/iwpriv rai0 stat > /tmp/rai0.dfsinfo"}, journal());
        EXPECT_EQ(row.text, read("/tmp/rai0.dfsinfo"));
    }
}

TEST_F(Status, OfTheFirstRadioHasNoRadarDetection) {
    dfs_info info = {-7, -7, -7};
    statistics = "Dot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount=2,60,15\n";
    EXPECT_EQ(0, wireless_get_dfs_info("ra0", &info));
    EXPECT_EQ(Lines{}, journal());
    EXPECT_EQ(-7, info.rd_mode);
}

TEST_F(Status, WithoutStatisticsIsReported) {
    char value[32] = "untouched";
    dfs_info info = {-7, -7, -7};
    EXPECT_EQ(0, wireless_get_dfs_info("rai0", &info));
    EXPECT_EQ("fopen /sbin/iwpriv rai0 stat > /tmp/rai0.dfsinfo fail", err());
    EXPECT_EQ(-7, info.channel_moving_time);
    EXPECT_EQ(0, mt762x_get_apcli_status("apclii0", value, value));
    EXPECT_EQ("popen /sbin/iwpriv apclii0 stat > /tmp/apclii0.stat fail", err());
    EXPECT_STREQ("untouched", value);
}

TEST_F(Status, KeepsItsFilesInTheirFolder) {
    dfs_info info = {};
    const std::string long_name(128, 'n');
    for (const std::string& name : {std::string("../etc/x"), long_name}) {
        EXPECT_EQ(0, wireless_get_dfs_info(name.c_str(), &info));
        EXPECT_EQ(0, mt762x_get_apcli_status(name.c_str(), nullptr, nullptr));
        EXPECT_NE("", err());
    }
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Status, ReadsTheClientLine) {
    const std::string x31(31, 'x');
    const struct {
        std::string line;
        int result;
        std::string first;
        std::string second;
    } kRows[] = {
        {"Ap Client Status=1,-62",                     1, "1",      "-62"     },
        {"Ap Client Status=1,-62,5 =6",                1, "1",      "-62,5 =6"},
        {"Ap Client Status=" + x31 + "a," + x31 + "b", 1, x31,      x31       },
        {"Ap Client Status=1",                         0, "1",      "(none)"  },
        {"Ap Client Status=1,",                        0, "1",      "(none)"  },
        {"Ap Client Status=",                          0, "(none)", "(none)"  },
        {"Ap Client Status2=1,-62",                    0, "(none)", "(none)"  },
        {"Ap Client=1,-62",                            0, "(none)", "(none)"  },
    };
    for (const auto& row : kRows) {
        clear_journal();
        statistics = "x=y\n" + row.line + "\nx=z\n";
        char first[32] = "(none)";
        char second[32] = "(none)";
        EXPECT_EQ(row.result, mt762x_get_apcli_status("apclii0", first, second)) << row.line;
        EXPECT_EQ(row.first, first) << row.line;
        EXPECT_EQ(row.second, second) << row.line;
        EXPECT_EQ(row.result, mt762x_get_apcli_status("apclii0", nullptr, nullptr));
        EXPECT_EQ(Lines(2, "$ /sbin/iwpriv apclii0 stat > /tmp/apclii0.stat"), journal());
    }
}

class RepeaterLink : public Status {
protected:
    RepeaterLink() {
        link() = {
            "upstream", "00:11:22:33:44:55", {36, 42, 5180, 9, 80},
              866
        };
        memset(&entry, 'x', sizeof entry);
    }
    static board::ClientLink& link() { return host().radios[1].client; }
    void expect_link(int result, const ap_entry& expected) {
        EXPECT_EQ(result, wireless_api_get_mbridge_status("apclii0", &entry));
        EXPECT_EQ(0, memcmp(&expected, &entry, sizeof entry));
    }
    static ap_entry up() {
        ap_entry expected = {};
        strcpy(expected.ssid, "upstream");
        strcpy(expected.bssid, "00:11:22:33:44:55");
        expected.channel = {36, 42, 5180, 9, 80};
        return expected;
    }
    ap_entry entry;
};

TEST_F(RepeaterLink, IsUpWithOrWithoutStatistics) {
    ap_entry expected = up();
    expect_link(1, expected);
    EXPECT_EQ("popen /sbin/iwpriv apclii0 stat > /tmp/apclii0.stat fail", err());
    statistics = "Ap Client Status=1\n";
    expect_link(1, expected);
    statistics = "Ap Client Status=1,-62\n";
    expected.rssi = -62;
    expected.signal = 70;
    expect_link(1, expected);
}

TEST_F(RepeaterLink, IsDownWithoutAnAccessPoint) {
    ap_entry expected = up();
    link().ap_mac = "";
    memset(expected.bssid, 0, sizeof expected.bssid);
    expect_link(0, expected);
    link().ssid = "";
    expect_link(0, {});
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(RepeaterLink, HasSpeedAndName) {
    char ssid[64];
    EXPECT_EQ(0, wireless_api_get_ssid("apclii0", ssid));
    EXPECT_STREQ("upstream", ssid);
    EXPECT_EQ(-1, wireless_api_get_ssid("nil0", ssid));
    EXPECT_EQ(866, rt61_get_wireless_link_speed("apclii0"));
    link().ap_mac = "";
    EXPECT_EQ(0, rt61_get_wireless_link_speed("apclii0"));
    link() = {"", "00:11:22:33:44:55", {}, 866};
    EXPECT_EQ(0, rt61_get_wireless_link_speed("apclii0"));
    EXPECT_EQ(1, wireless_api_get_keyinfo_status());
}

TEST_F(Status, HasAPowerOfAtMost100) {
    for (const auto& [percent, set] : {
             std::pair(150, "100"), {100, "100"},
               {99,  "99" },
               {-5,  "-5" }
    }) {
        clear_journal();
        EXPECT_EQ(0, rt61_wireless_api_set_txpower("ra0", percent));
        EXPECT_EQ(Lines{std::string("$ /sbin/iwpriv ra0 set TxPower=") + set}, journal());
    }
}

}  // namespace
