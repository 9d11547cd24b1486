// Which interfaces an apply brings up and into the bridge, and the repeater link as WAN.
#include "tests/profile/sample_radios.h"

namespace {

std::string down(const std::string& ifname) {
    return "$2 /sbin/brctl delif br0 " + ifname + "\nifdown " + ifname + '\n';
}

std::string rule(const std::string& action, const std::string& ifname) {
    return "/sbin/iptables -t nat -" + action + " POSTROUTING -o " + ifname + " -j MASQUERADE";
}

const std::string kDown = down("ra0") + down("ra1") + down("ra2") + down("ra3") + down("apcli0");
const std::string kUp =
    "ifup ra0\nsleep 1\n$2 /sbin/iwpriv ra0 set EntryLifeCheck=64\nifup ra0\n"
    "$2 /sbin/brctl addif br0 ra0\n";
const std::string kBridged = "ifup apcli0\n$2 /sbin/brctl addif br0 apcli0\n";
const std::string kDelete = "$2 " + rule("D", "wwan0") + '\n';
const std::string kClear =
    "set_ifconfig wwan0 0.0.0.0 255.255.255.0\n$2 /usr/bin/killall dhclient\nstop_wan wan1\n";
const std::string kCleaned = kDelete + "err Cleanup WWAN : wwan0\n" + kClear;
const std::string kWanUp = "ifup apcli0\nerr StartUp WWAN : wwan0\n" + kDelete + "$2 " +
                           rule("A", "wwan0") + '\n' + kClear;
const std::string kNetwork = "apply_network_configuration\n";

// One BSS, and a chipset that needs no multicast groups.
class Bridge : public harness::SampleRadios {
protected:
    Bridge() {
        radio(0).chipset = "mt7603";
        harness::put_text(record(0).wwan_ifname, "wwan0");
    }
    // An apply from where all is down.
    void expect_apply(const std::string& journal) {
        apply(0);
        EXPECT_EQ(harness::kWritten + "60\n" + kDown + journal + "signal_start 8021x\n",
                  journal_text());
    }
};

TEST_F(Bridge, TakesWhatIsOn) {
    const std::tuple<int, int, const char*, int, std::string> kRows[] = {
        {0,  0,  "static",  1, kDelete            },
        {0,  0,  "static",  0, kCleaned           },
        {-1, 0,  "static",  0, kBridged + kCleaned},
        {0,  1,  "static",  1, kDelete            },
        {1,  1,  "dhcp",    1, kWanUp             },
        {1,  -1, "",        0, kWanUp             },
        {1,  1,  "static",  1, kWanUp + kNetwork  },
        {1,  1,  "static2", 1, kWanUp             },
    };
    for (const auto& [client, client_as_wan, wan_type, deleted, journal] : kRows) {
        SCOPED_TRACE(testing::Message() << client << client_as_wan << wan_type << deleted);
        record(0).apcli_enable = client;
        record(0).apcli_wan = client_as_wan;
        host().wan_types["wan1"] = wan_type;
        answer(rule("D", "wwan0"), deleted);
        expect_apply(kUp + journal);
    }
}

TEST_F(Bridge, LeavesOutABssThatIsOffAndGroupsOfAnotherChipset) {
    for (const char* chipset : {"", "mt7615e", "MT7615"}) {
        radio(0).chipset = chipset;
        expect_apply(kUp + kDelete);
    }
    record(0).enabled = 0;
    const std::string full(72, 'w');
    harness::put_text(record(0).wwan_ifname, full);
    expect_apply(down("ra0") + "$2 " + rule("D", full) + '\n');
}

}  // namespace
