#include "platform/switch.h"
#include "src/host/runner.h"
#include "src/support/message.h"
#include "src/switch/ports.h"

using namespace platform;

namespace {

// Members of a VLAN: one character for each switch port, port 0 first.
using MemberMap = char[16];

// VLAN 1 is the LAN, VLAN 2 the WAN.
void join_lan(int port, MemberMap& members) {
    members[port] = '1';
    run_host(Command<64>("switch vlan pvid %d 1", port));
    print_error("switch vlan pvid %d 1\n", port);
}

void join_wan(int port, MemberMap& members) {
    run_host(Command<64>("switch vlan pvid %d 2", port));
    print_error("switch vlan pvid %d 2\n", port);
    members[port] = '1';
}

void setup_switch_vlan(const hw_info& hw, bool iptv) {
    const int iptv_port = switch_port_of(hw, hw.iptv_port);
    const bool iptv_active = iptv && iptv_port != kNoPort && hw.iptv_port != kNoPort;

    MemberMap lan = "00000010";
    MemberMap wan = "00000100";
    for (int i = 1; i <= lan_ports(hw); ++i) {
        const int port = switch_port_of(hw, i);
        if (port == kNoPort || (iptv_active && port == iptv_port)) continue;
        join_lan(port, lan);
    }
    print_error("=========> VLAN_INIT\n");
    for (int j = 0; j < wan_ports(hw); ++j) {
        const int port = switch_port_of(hw, kFirstWanPort + j);
        if (port != kNoPort) join_wan(port, wan);
    }
    if (iptv_active) join_wan(iptv_port, wan);

    run_host(Command<64>("switch vlan set 1 1 %s", lan));
    print_error("switch vlan  set 1 1 %s\n", lan);
    run_host(Command<64>("switch vlan  set 2 2 %s", wan));
    print_error("switch vlan  set 2 2 %s\n", wan);
}

}  // namespace

int reinit_vlan() {
    const int iptv = get_iptv_config();
    setup_switch_vlan(hardware(), iptv == 1);
    return 0;
}

int set_iptv_system(int iptv) {
    setup_switch_vlan(hardware(), iptv != 0);
    return 0;
}

int init_ethernet_switch() {
    const int iptv = get_iptv_config();
    return iptv == 1 ? set_iptv_system(1) : iptv;
}
