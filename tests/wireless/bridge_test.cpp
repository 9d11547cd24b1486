// Which interfaces an apply brings up and into the bridge, and the repeater link as WAN.
#include "profile/sample_radios.h"

namespace {

using harness::Lines;

Lines operator+(Lines left, const Lines& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Lines down(const std::string& ifname) {
    return {"$2 /sbin/brctl delif br0 " + ifname, "ifdown " + ifname};
}

Lines rule(const std::string& action, const std::string& ifname) {
    return {"$2 /sbin/iptables -t nat -" + action + " POSTROUTING -o " + ifname + " -j MASQUERADE"};
}

const Lines kDown = down("ra0") + down("ra1") + down("ra2") + down("ra3") + down("apcli0");
const Lines kUp = {"ifup ra0", "sleep 1", "$2 /sbin/iwpriv ra0 set EntryLifeCheck=64", "ifup ra0",
                   "$2 /sbin/brctl addif br0 ra0"};
const Lines kClient = {"ifup apcli0"};
const Lines kClientBridged = {"ifup apcli0", "$2 /sbin/brctl addif br0 apcli0"};
const Lines kDelete = rule("D", "wwan0");
const Lines kClear = {"set_ifconfig wwan0 0.0.0.0 255.255.255.0", "$2 /usr/bin/killall dhclient",
                      "stop_wan wan1"};
const Lines kWan = kClient + kDelete + rule("A", "wwan0") + kClear;
const Lines kNetwork = {"apply_network_configuration"};
const Lines kService = {"signal_start 8021x"};
constexpr const char* kStarted = "StartUp WWAN : wwan0\n";
constexpr const char* kCleaned = "Cleanup WWAN : wwan0\n";

struct Situation {
    const char* name;
    int32_t client;
    int32_t client_as_wan;
    const char* wan_type;
    int delete_status;
    Lines journal;  // once the BSS is up
    const char* message;
};
void PrintTo(const Situation& row, std::ostream* os) {
    *os << row.name;
}

// One BSS, and a chipset that needs no multicast groups.
class Bridge : public harness::SampleRadios {
protected:
    Bridge() {
        radio(0).chipset = "mt7603";
        harness::put_text(record(0).wwan_ifname, "wwan0");
    }
};
class BridgeOf : public Bridge, public testing::WithParamInterface<Situation> {};

TEST_P(BridgeOf, TakesWhatIsOn) {
    const Situation& row = GetParam();
    record(0).apcli_enable = row.client;
    record(0).apcli_wan = row.client_as_wan;
    host().wan_types["wan1"] = row.wan_type;
    answer(kDelete[0].substr(3), row.delete_status);
    EXPECT_EQ(harness::kWritten + "60\n" + row.message, apply(0));
    EXPECT_EQ(kDown + kUp + row.journal + kService, journal());
}

const Situation kSituations[] = {
    {"BssAlone",         0,  0,  "static",  1,  kDelete,                           ""      },
    {"BssAfterWan",      0,  0,  "static",  0,  kDelete + kClear,                  kCleaned},
    {"DeleteNotRun",     0,  0,  "static",  -1, kDelete,                           ""      },
    {"Client",           1,  0,  "static",  1,  kClientBridged + kDelete,          ""      },
    {"ClientAfterWan",   -1, 0,  "static",  0,  kClientBridged + kDelete + kClear, kCleaned},
    {"WanWithoutClient", 0,  1,  "static",  1,  kDelete,                           ""      },
    {"Wan",              1,  1,  "dhcp",    1,  kWan,                              kStarted},
    {"WanAgain",         1,  -1, "",        0,  kWan,                              kStarted},
    {"StaticWan",        1,  1,  "static",  1,  kWan + kNetwork,                   kStarted},
    {"WanOfALongerType", 1,  1,  "static2", 1,  kWan,                              kStarted},
};
INSTANTIATE_TEST_SUITE_P(, BridgeOf, testing::ValuesIn(kSituations), harness::CaseName());

TEST_F(Bridge, LeavesOutABssThatIsOff) {
    record(0).enabled = 0;
    apply(0);
    EXPECT_EQ(kDown + down("ra0") + kDelete + kService, journal());
}

TEST_F(Bridge, GivesNoGroupsToAnotherChipset) {
    for (const char* chipset : {"", "mt7615e", "MT7615"}) {
        radio(0).chipset = chipset;
        clear_journal();
        apply(0);
        EXPECT_EQ(kDown + kUp + kDelete + kService, journal());
    }
}

TEST_F(Bridge, TakesAnyWanNameAsOneWord) {
    const std::string full(72, 'w');
    for (const auto& [name, word] : {
             std::pair<std::string, std::string>{"w; id", "'w; id'"},
             {"$(id)", "'$(id)'"},
             {full,    full     }
    }) {
        harness::put_text(record(0).wwan_ifname, name);
        clear_journal();
        apply(0);
        EXPECT_EQ(kDown + kUp + rule("D", word) + kService, journal());
    }
}

}  // namespace
