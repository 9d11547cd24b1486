#include "src/wireless/bridge.h"

#include "src/host/host_buffer.h"
#include "src/host/runner.h"
#include "src/support/message.h"
#include "src/support/pause.h"
#include "src/support/text.h"
#include "src/wlmap/ifname.h"

namespace platform {
namespace {

constexpr const char* kGroupChipset = "mt7615";

void join_bridge(const IfName& name) {
    run_host(Command<128>("/sbin/brctl addif br0 %s", name.view()));
}

void leave_bridge(const IfName& name) {
    run_host(Command<128>("/sbin/brctl delif br0 %s", name.view()));
    ifdown(name.c_str());
}

void take_down(int32_t wl_mode) {
    for (int bss = 0; bss < PLATFORM_BSS_MAX; ++bss) leave_bridge(IfName::bss(wl_mode, bss));
    leave_bridge(IfName::client(wl_mode));
}

void start_radio(const char* ifname) {
    ifup(ifname);
    pause_seconds(1);
    run_host(Command<128>("/sbin/iwpriv %s set EntryLifeCheck=64", ifname));
}

// This chipset wants the groups of service discovery named for every BSS.
void add_multicast_groups(int32_t wl_mode, const IfName& name) {
    char chipset[128] = {};
    if (getsi_wifi_chipset_name(0, wl_mode, chipset, sizeof chipset) == 0) return;
    if (field_text(chipset) != kGroupChipset) return;
    run_host(Command<128>("/sbin/iwpriv %s set IgmpAdd=239.255.255.250", name.view()));
    run_host(Command<128>("/sbin/iwpriv %s set IgmpAdd=224.0.1.187", name.view()));
    run_host(Command<128>("/sbin/iwpriv %s set IgmpAdd=224.0.0.251", name.view()));
}

void bring_up(int32_t wl_mode, const BssSet& set) {
    int number = 0;
    for (const wireless_conf& bss : set.configured()) {
        const IfName name = IfName::bss(wl_mode, number++);
        if (bss.enabled == 0) {
            leave_bridge(name);
            continue;
        }
        ifup(name.c_str());
        join_bridge(name);
        add_multicast_groups(wl_mode, name);
    }
}

void bring_client_up(int32_t wl_mode, bool is_wan) {
    const IfName name = IfName::client(wl_mode);
    ifup(name.c_str());
    if (!is_wan) join_bridge(name);
}

int delete_masquerade(const char* wan) {
    return run_host(Command<256>("/sbin/iptables -t nat -D POSTROUTING -o %s -j MASQUERADE", wan));
}

// Without an address and a lease, and with the wired WAN off.
void clear_wan(const char* wan) {
    set_ifconfig(wan, "0.0.0.0", "255.255.255.0");
    run_host(Command<64>("/usr/bin/killall dhclient"));
    stop_wan("wan1");
}

void start_wireless_wan(const char* wan) {
    print_error("StartUp WWAN : %s\n", wan);
    delete_masquerade(wan);
    run_host(Command<256>("/sbin/iptables -t nat -A POSTROUTING -o %s -j MASQUERADE", wan));
    clear_wan(wan);
    HostBuffer<char[128]> type;
    get_wan_type("wan1", type.block);
    if (field_text(type.block) == "static") apply_network_configuration();
}

// A rule that could be deleted is the sign of a wireless WAN that ran before.
void clean_wireless_wan_up(const char* wan) {
    if (delete_masquerade(wan) != 0) return;
    print_error("Cleanup WWAN : %s\n", wan);
    clear_wan(wan);
}

}  // namespace

void create_bridge() {
    print_out("Bridge Init\n");
    run_shell(Command<64>("/sbin/brctl addbr br0"));
    run_shell(Command<64>("/sbin/brctl stp br0 off"));
    run_shell(Command<64>("/sbin/brctl setfd br0 0"));
    run_shell(Command<64>("/sbin/brctl addif br0 eth0"));

    constexpr const char* kSnooping = "/sys/devices/virtual/net/br0/bridge/multicast_snooping";
    if (file_exists(kSnooping)) run_host(Command<128>("echo 0 > %s", kSnooping));
    run_host(Command<128>("ifconfig %s hw ether %s", "br0", easymesh_get_almac()));
    ifup("br0");
}

void mtk_wlif_update_bridge(const char* ifname, int32_t wl_mode, const BssSet& set) {
    const wireless_conf& radio = set.radio();
    take_down(wl_mode);
    if (radio.enabled != 0) start_radio(ifname);

    const int32_t mode = get_wl_mode_by_ifname(ifname);
    bring_up(mode, set);
    const bool has_client = radio.apcli_enable != 0;
    const bool is_wan = radio.apcli_wan != 0;
    if (has_client) bring_client_up(mode, is_wan);

    const TextCopy<sizeof radio.wwan_ifname + 1> wan(field_text(radio.wwan_ifname));
    if (has_client && is_wan) {
        start_wireless_wan(wan.c_str());
    } else {
        clean_wireless_wan_up(wan.c_str());
    }
}

}  // namespace platform
