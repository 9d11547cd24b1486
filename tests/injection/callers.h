// Calls that make the library form each of its commands, with texts from outside in every place
// that takes one.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "board/host/state.h"
#include "platform/platform.h"
#include "tests/support/outside.h"

namespace injection {

inline constexpr const char* kFactoryMode = "/tmp/factory_default_mode";
inline constexpr const char* kSnooping = "/sys/devices/virtual/net/br0/bridge/multicast_snooping";

// The number of a round varies what is no text.
struct Call {
    harness::Outside& board;
    const std::vector<std::string>& texts;
    int round;
    const char* text(size_t i) const { return texts[i].c_str(); }
};

template <size_t kSize>
void put(char (&field)[kSize], const std::string& text) {
    std::snprintf(field, kSize, "%s", text.c_str());
}

inline void bring_radios_up(const Call& call) {
    for (const std::string radio : {"INDEX0_", "INDEX1_"}) {
        call.board.index += radio + "main_ifname=" + call.text(0) + '\n' + radio + "ext_ifname=";
        call.board.index += call.texts[1] + '\n' + radio + "apcli_ifname=" + call.text(2) + '\n';
    }
    board::State& host = board::state();
    host.almac = call.text(3);
    wireless_conf& conf = host.radios[0].bss[0];
    conf.enabled = conf.apcli_enable = 1;
    conf.apcli_wan = call.round % 2;
    put(conf.wwan_ifname, call.text(4));
    for (hw_tpc* tpc : {&host.hw.tpc_2g, &host.hw.tpc_5g}) {
        tpc->enable = 1;
        put(tpc->value, call.text(5));
        put(tpc->duty, call.text(0));
    }
    platform_init_wireless();
    wireless_set_igmpsnoop(call.text(0), call.round % 2);
    wireless_macauth_set_policy(1, call.round % 3);
    wireless_apply_macauth(2);
    wireless_api_wireless_disable();
}

inline void use_driver_files(const Call& call) {
    station_list list = {};
    put(list.ifname, call.text(0));
    wireless_api_get_station_list(&list);
    dfs_info info;
    wireless_get_dfs_info(call.text(0), &info);
    mt762x_get_apcli_status(call.text(0), nullptr, nullptr);
}

inline void use_interface(const Call& call) {
    wireless_api_start_ap_scan(call.text(0));
    wireless_api_wait_scan_end(call.text(0));
    rt61_wireless_api_clear_station_info(call.text(0));
    rt61_wireless_api_set_txpower(call.text(0), call.round - 50);
    wireless_prepare_wps(call.text(0));
    const wps_start_request request = {call.round % 2, call.round * 7919};
    wireless_wps_start(call.text(0), &request);
    put(board::state().radios[0].bss[0].ssid, call.text(1));
    wireless_wps_stop(call.text(0));
    wireless_gen_pincode(call.text(0));
    const uint8_t mac[6] = {static_cast<uint8_t>(call.round), 1, 0xFF, 9, 0x80, 0xAB};
    mt762x_set_eeprom_mac(call.text(0), mac);
    platform_set_wireless(nullptr, call.text(0));
}

inline void set_boot_variables(const Call& call) {
    char value[32];
    get_bootconfig(call.text(0), value, sizeof value);
    set_bootconfig("set", (call.texts[0] + '=' + call.texts[1]).c_str());
}

inline void name_files(const Call& call) {
    restore_backup_config(call.text(0));
    mtd_writebuf("bytes", 0, 5, call.text(0));
}

inline void hand_over_no_text(const Call& call) {
    if (call.round % 100 >= 6) return;
    board::state().band_steering = 1;
    wireless_restart_bandstrg();
    call.board.index = "INDEX0_main_ifname=ra0\nINDEX1_main_ifname=rai0\n";
    board::state().radios[0].bss[0].auth_mode = WIRELESS_AUTH_WPA2;
    wireless_restart_8021xd();
    call.board.remove(kFactoryMode);
    put(board::state().hw.switch_chip, call.round % 2 ? "mt7530" : "mt7531");
    port_setting setting = {"fixed", "100", "full"};
    set_port_config(1, &setting);
    set_sniff_port(call.round % 3);
    reinit_vlan();
    get_link_status(1 + call.round % 4, &setting);
    clear_port_statistics();
    ethswitch_clear_mactable();
    update_led_silent_control(1, call.round % 2);
    const char raw[6] = {static_cast<char>(call.round), '$', '`', '"', '\'', '\n'};
    ethswitch_del_mac(raw);
    platform_get_drv()->refresh_non_ipv4_input_rule();
    call.board.status_of = [](const std::string& command) {
        return int{command[0] == 'i'};
    };  // insmod
    init_mt7622();
    call.board.status_of = nullptr;
}

struct Caller {
    const char* name;
    size_t texts;         // how many it takes
    size_t longest;       // so that every command fits with each byte escaped
    const char* without;  // bytes that cannot stand in such a text
    char not_first;       // a byte that cannot begin one, or NUL
    void (*run)(const Call& call);
};

inline constexpr Caller kCallers[] = {
    {"names of the index file", 6, 10, "\n", '\0', bring_radios_up   },
    {"names of driver files",   1, 9,  "/",  '\0', use_driver_files  },
    {"names of interfaces",     2, 12, "",   '\0', use_interface     },
    {"boot variables",          2, 24, "&=", '-',  set_boot_variables},
    {"paths and partitions",    1, 24, "",   '-',  name_files        },
    {"no text from outside",    0, 0,  "",   '\0', hand_over_no_text },
};

}  // namespace injection
