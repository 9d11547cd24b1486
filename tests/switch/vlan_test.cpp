// VLANs, mirroring and port LEDs.
#include "tests/switch/switch_board.h"

namespace {

using harness::Lines;

class Vlans : public harness::SwitchBoard {
protected:
    // A command and its message are the same text, but for one blank.
    void expect_vlans(const char* lan, const char* wan, const std::string& map1,
                      const std::string& map2) {
        Lines expected;
        const auto join = [&](std::string_view ports, const char* vlan) {
            for (const char port : ports)
                for (const std::string mark : {"$2", "err"})
                    expected.push_back(mark + " switch vlan pvid " + port + vlan);
        };
        join(lan, " 1");
        expected.push_back("err =========> VLAN_INIT");
        join(wan, " 2");
        expected.insert(expected.end(),
                        {"$2 switch vlan set 1 1 " + map1, "err switch vlan  set 1 1 " + map1,
                         "$2 switch vlan  set 2 2 " + map2, "err switch vlan  set 2 2 " + map2});
        EXPECT_EQ(expected, journal());
        clear_journal();
    }
    void expect_vlans(bool with_iptv) {
        if (with_iptv) return expect_vlans("210", "43", "11100010", "00011100");
        expect_vlans("3210", "4", "11110010", "00001100");
    }
};

TEST_F(Vlans, SplitLanFromWanAndIptvMovesItsPort) {
    host().lan_switch_ports = {3, 2, 1, 0};
    host().hw.iptv_port = 1;
    for (const int iptv : {0, 1, 2}) {
        EXPECT_EQ(0, set_iptv_system(iptv));
        expect_vlans(iptv != 0);
        host().iptv_config = iptv;
        EXPECT_EQ(0, reinit_vlan());
        expect_vlans(iptv == 1);
    }
    for (const int no_port : {-1, 9, INT32_MIN}) {
        host().hw.iptv_port = no_port;
        EXPECT_EQ(0, set_iptv_system(1));
        expect_vlans(false);
    }
}

TEST_F(Vlans, PortsWithoutASwitchPortAreSkipped) {
    host().lan_switch_ports = {0, -1, 2};
    host().wan_switch_ports = {};
    host().hw.wan_port_count = 2;
    EXPECT_EQ(0, reinit_vlan());
    expect_vlans("02", "", "10100010", "00000100");
}

TEST_F(Vlans, AtTheStartOnlyIptvIsSetUp) {
    for (const int iptv : {0, 2}) {
        host().iptv_config = iptv;
        EXPECT_EQ(iptv, init_ethernet_switch());
        EXPECT_EQ(Lines{}, journal());
    }
    host().iptv_config = 1;
    EXPECT_EQ(0, init_ethernet_switch());
    expect_vlans("012", "43", "11100010", "00011100");
}

TEST_F(Vlans, OtherLanPortsAreMirroredToTheMonitor) {
    EXPECT_EQ(0, init_sniff_port());  // nothing
    EXPECT_EQ(0, set_sniff_port(2));
    EXPECT_EQ(0, set_sniff_port(0));  // off before that is stored
    host().sniff_port = 3;
    host().hw.lan_port_count = 2;
    EXPECT_EQ(0, init_sniff_port());  // to the first LAN port
    EXPECT_EQ((Lines{"iconfig_set_intvalue_direct port_mirror 2", "$2 switch mirror enable 1 1",
                     "$2 switch mirror target 0 3", "$2 switch mirror target 2 3",
                     "$2 switch mirror target 3 3", "$2 switch mirror enable 0 -1",
                     "iconfig_set_intvalue_direct port_mirror 0",
                     "iconfig_set_intvalue_direct port_mirror 1", "$2 switch mirror enable 1 0",
                     "$2 switch mirror target 1 3"}),
              journal());
}

// Those of the board's own chip are in the LEDs' tests.
TEST_F(Vlans, PortLedsAreRegistersOfTheChip) {
    for (const char* chip : {"mt7530", "mt7532"}) {
        std::strcpy(host().hw.switch_chip, chip);
        EXPECT_EQ(0, set_port_led_all(1) + set_port_led_all(0));
    }
    EXPECT_EQ((Lines{"$2 switch reg w 7d00 77777", "$2 switch reg w 7d00 66666"}), journal());
}

}  // namespace
