// The driver's WSC status in its two readings, and the peer of a run.
#include "frame/host.h"
#include "live/interfaces.h"
#include "platform/wps.h"
#include "support/driver.h"

namespace {

class WpsStatus : public harness::Driver {
protected:
    WpsStatus() {
        board::set_interface_up("ra0", true);
        board::set_interface_up("rai0", true);
    }
    void report(const char* ifname, uint32_t status) {
        objects[std::string(ifname) + " 0751"] = word(status);
    }
    static void store(const char* key, const char* state) {
        istatus_set_value_direct((std::string("wps_status.") + key).c_str(), state);
    }
};

TEST_F(WpsStatus, ReadsEachDriverStatusAsControlAndAsPeer) {
    const struct {
        int64_t first, last;
        int control;  // while the host knows of a run, so that idle reads as running
        uint32_t peer;
    } kRows[] = {
        {0,           1,           3, 1},
        {2,           2,           5, 5},
        {3,           3,           3, 2},
        {4,           29,          3, 3},
        {30,          33,          5, 5},
        {34,          34,          4, 4},
        {35,          256,         3, 3},
        {257,         257,         3, 5},
        {0x7FFFFFFF,  0x7FFFFFFF,  3, 5},
        {0x80000000L, 0x80000000L, 3, 3},
    };
    store("ra0", "3");
    objects["ra0 075c"] = std::string(200, '\0');
    for (const auto& row : kRows) {
        for (int64_t status = row.first; status <= row.last; ++status) {
            SCOPED_TRACE(status);
            report("ra0", static_cast<uint32_t>(status));
            uint32_t raw = 99;
            wsc_peer_info info;
            EXPECT_EQ(row.control, wireless_get_wps_status("ra0", &raw));
            EXPECT_EQ(status, raw);
            EXPECT_EQ(1, apcp_get_wsc_peerinfo_by_ifname("ra0", &info));
            EXPECT_EQ(row.peer, info.state);
        }
    }
}

TEST_F(WpsStatus, IsTheHostsOwnUnlessItSaysRunning) {
    report("ra0", 34);
    uint32_t raw = 99;
    EXPECT_EQ(1, wireless_get_wps_status("ra0", &raw));
    for (const int state : {-7, -1, 0, 1, 2, 4, 5}) {
        store("ra0", std::to_string(state).c_str());
        EXPECT_EQ(state == -1 ? 1 : state, wireless_get_wps_status("ra0", &raw));
    }
    EXPECT_TRUE(requests.empty());
    store("ra0", "3");
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
    const struct {
        uint32_t first, second;
        int state;
        uint32_t raw;
    } kRows[] = {
        {1,        34,       4,  34},
        {34,       2,        4,  34},
        {3,        2,        5,  2 },
        {0,        29,       3,  29},
        {1,        kRefused, -1, 1 },
        {kRefused, 34,       -1, 99},
    };
    store("both", "3");
    for (const auto& row : kRows) {
        objects.clear();
        if (row.first != kRefused) report("ra0", row.first);
        if (row.second != kRefused) report("rai0", row.second);
        uint32_t raw = 99;
        EXPECT_EQ(row.state, wireless_get_wps_status(nullptr, &raw));
        EXPECT_EQ(row.raw, raw);
    }
}

TEST_F(WpsStatus, NamesTheFirstConfiguredInterfaceThatIsUp) {
    char name[32] = "untouched";
    report("rai0", 33);
    EXPECT_EQ(0, wireless_get_wps_configured_ifname(name));
    EXPECT_STREQ("untouched", name);
    report("rai0", 34);
    EXPECT_EQ(1, wireless_get_wps_configured_ifname(name));
    EXPECT_STREQ("rai0", name);
    report("ra0", 34);
    for (const bool up : {true, false}) {
        board::set_interface_up("ra0", up);
        EXPECT_EQ(1, wireless_get_wps_configured_ifname(name));
        EXPECT_STREQ(up ? "ra0" : "rai0", name);
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
        const auto text = [](const char(&field)[64]) {
            return std::string(field, strnlen(field, 64));
        };
        EXPECT_EQ(
            (harness::Lines{texts[0], texts[1].substr(0, 63), texts[2], texts[3], texts[4]}),
            (harness::Lines{text(info.device_name), text(info.manufacturer), text(info.model_name),
                            text(info.model_number), text(info.serial_number)}));
    }
    WpsPeer() { memset(&info, 'x', sizeof info); }
    wsc_peer_info info;
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
