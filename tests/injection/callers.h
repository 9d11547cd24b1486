// Calls that make the library form each of its commands, with texts from outside in every place
// that takes one.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "host/state.h"
#include "memory_board.h"
#include "platform/platform.h"

namespace injection {

using Texts = std::vector<std::string>;

// The number of a round varies what is no text.
struct Call {
    harness::MemoryBoard& board;
    const Texts& texts;
    int round;
    const char* text(size_t i) const { return texts[i].c_str(); }
};

struct Caller {
    const char* name;
    size_t texts;         // how many it takes
    size_t longest;       // so that every command fits with each byte escaped
    const char* without;  // bytes that cannot stand in such a text
    int every;            // done every so many rounds
    void (*run)(const Call& call);
};

template <size_t kSize>
void put(char (&field)[kSize], const std::string& text) {
    std::memset(field, 0, kSize);
    std::memcpy(field, text.data(), text.size());
}

inline void bring_radios_up(const Call& call) {
    for (int radio = 0; radio < 2; ++radio)
        for (const auto& [key, text] : {
                 std::pair("main", 0), {"ext",   1},
                   {"apcli", 2}
        })
            call.board.index += "INDEX" + std::to_string(radio) + '_' + key +
                                "_ifname=" + call.texts[static_cast<size_t>(text)] + '\n';
    board::State& host = board::state();
    host.almac = call.texts[3];
    wireless_conf& conf = host.radios[0].bss[0];
    conf.enabled = conf.apcli_enable = 1;
    conf.apcli_wan = call.round % 2;
    put(conf.wwan_ifname, call.texts[4]);
    for (hw_tpc* tpc : {&host.hw.tpc_2g, &host.hw.tpc_5g}) put(tpc->value, call.texts[5]);
    for (hw_tpc* tpc : {&host.hw.tpc_2g, &host.hw.tpc_5g}) put(tpc->duty, call.texts[0]);
    host.hw.tpc_2g.enable = host.hw.tpc_5g.enable = 1;
    platform_init_wireless();
    wireless_set_igmpsnoop("ra0", call.round % 2);
    wireless_macauth_set_policy(1, call.round % 3);
    wireless_apply_macauth(2);
    wireless_api_wireless_disable();
}

inline void use_driver_files(const Call& call) {
    station_list list = {};
    put(list.ifname, call.texts[0]);
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
    put(board::state().radios[0].bss[0].ssid, call.texts[1]);
    wireless_wps_stop(call.text(0));
    wireless_gen_pincode(call.text(0));
    const auto byte = static_cast<uint8_t>(call.round);
    const uint8_t mac[6] = {byte, 1, 0xFF, byte, 0x80, byte};
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

inline void start_authenticators(const Call& call) {
    for (const char* name : {"ra0", "rai0"}) {
        call.board.index = "INDEX0_main_ifname=" + std::string(name) + '\n';
        wireless_restart_8021xd();
    }
    board::state().band_steering = 1;
    wireless_restart_bandstrg();
}

inline void use_switch(const Call& call) {
    call.board.file_is_there = false;  // no factory test mode
    std::memcpy(board::state().hw.switch_chip, call.round % 2 ? "mt7530" : "mt7531", 7);
    const port_setting setting = {"fixed", "100", "full"};
    set_port_config(1, &setting);
    set_sniff_port(call.round % 3);
    reinit_vlan();
    port_setting state;
    get_link_status(1 + call.round % 4, &state);
    clear_port_statistics();
    ethswitch_clear_mactable();
    update_led_silent_control(1, call.round % 2);
    const char raw[6] = {static_cast<char>(call.round), '$', '`', '"', '\'', '\n'};
    ethswitch_del_mac(raw);
    platform_get_drv()->refresh_non_ipv4_input_rule();
}

inline void start_board(const Call& call) {
    call.board.on_command = [](const char* command) {
        return std::strncmp(command, "insmod", 6) == 0 ? 1 : 0;
    };
    init_mt7622();
    call.board.on_command = nullptr;
}

inline constexpr Caller kCallers[] = {
    {"names of the index file", 6, 10, "\n", 1,   bring_radios_up     },
    {"names of driver files",   1, 9,  "/",  1,   use_driver_files    },
    {"names of interfaces",     2, 12, "",   1,   use_interface       },
    {"boot variables",          2, 24, "&=", 1,   set_boot_variables  },
    {"paths and partitions",    1, 24, "",   1,   name_files          },
    {"authenticators",          0, 0,  "",   50,  start_authenticators},
    {"switch",                  0, 0,  "",   10,  use_switch          },
    {"start",                   0, 0,  "",   500, start_board         },
};

}  // namespace injection
