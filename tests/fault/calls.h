// A call of every exported function, with arguments that make it work.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <type_traits>

#include "platform/platform.h"
#include "src/host/host.h"

namespace fault {

inline constexpr int kNone = -999;
struct Call {
    const char* name;
    int (*run)(char* out);  // out: room for any output
    int failure = kNone;    // the result that promises an untouched output
    bool ends = false;      // a failing socket or ioctl ends the process
};

template <class F>
int result_of(F function) {
    if constexpr (std::is_same_v<int, decltype(function())>) {
        return function();
    } else {
        return static_cast<void>(function()), 0;
    }
}

template <class Record>
Record* as(char* out) {
    return reinterpret_cast<Record*>(out);
}

inline int open_and_close() {
    const int device = mtd_open("Config", O_RDONLY);
    return device == -1 ? -1 : close(device);
}

// With the control socket open.
template <class F, class... Arguments>
int on_switch(F function, Arguments... arguments) {
    switch_ioctl_init();
    function(arguments...);
    return switch_ioctl_fini();
}

inline int list_wired_stations() {
    wired_station_list list = {};
    apcp_get_stalist_from_ethswitch(&list);
    return free_all_list(&list, nullptr);
}

// What the function lists of ra0.
template <class List>
int list_of(char* out, int (*function)(List*)) {
    List& list = *as<List>(out);
    list = {};
    sf_strncpy(list.ifname, "ra0", sizeof list.ifname);
    return function(&list);
}

inline char station_mac[] = "00:11:22:AA:BB:CC";
inline wireless_conf bss_set[PLATFORM_BSS_MAX] = {};
inline constexpr uint8_t kBytes[16] = {2, 0x9F, 0x33, 1, 2, 3};
inline constexpr port_setting kOff = {"off", "", ""};
inline constexpr wps_start_request kPin = {1, 12345670};
inline constexpr const char* kWired = "00:00:00:04:00:00";

#define RUN(function, ...)                                       \
    [](char* out) {                                              \
        (void)out;                                               \
        return result_of([&] { return function(__VA_ARGS__); }); \
    }
#define CALL(function, ...) \
    { #function, RUN(function, __VA_ARGS__) }
#define FAILS(failure, function, ...) \
    { #function, RUN(function, __VA_ARGS__), failure }
#define ENDS(function, ...) \
    { #function, RUN(function, __VA_ARGS__), kNone, true }
#define ON_SWITCH(function, ...) \
    { #function, RUN(on_switch, function, __VA_ARGS__), kNone, true }

// clang-format off
inline const Call kCalls[] = {
    // Without arguments.
    CALL(check_ated_flag), CALL(check_diag_flag), CALL(check_eeprom), CALL(clear_diag_flag),
    CALL(clear_port_statistics), CALL(ethswitch_clear_mactable), CALL(extract_eeprom),
    CALL(get_config_region_size), CALL(get_pincode_flash), CALL(get_run_led_state),
    CALL(get_usb_mode), CALL(gpio_set_led), CALL(init_ethernet_switch), CALL(init_gpio),
    CALL(init_gpio_after_insmod), CALL(init_mt7622), CALL(init_mt762x_hwnat), CALL(init_sniff_port),
    CALL(is_factory_test_mode), CALL(mtk_optimize_set), CALL(mtk_profile_update_for_easymesh),
    CALL(mtk_tpc_patch), CALL(platform_default), CALL(platform_get_drv),
    CALL(platform_get_rst_button_pressed), CALL(platform_get_wps_button_pressed),
    CALL(platform_init_wireless), CALL(platform_reset), CALL(platform_restore), CALL(platform_save),
    CALL(platform_wireless_api_stop_ap_scan), CALL(pushed_reset_button), CALL(pushed_wps_button),
    CALL(reinit_vlan), CALL(rt61_get_hostinfo_from_wireless), CALL(send_system_reboot_signal),
    CALL(set_ated_flag), CALL(set_ftm_cache), CALL(set_pincode_flash), CALL(set_usb_mode),
    CALL(set_usbled), CALL(soft_reset), CALL(start_runled), CALL(stop_runled),
    CALL(wireless_api_get_keyinfo_status), CALL(wireless_api_wireless_disable),
    CALL(wireless_macauth_kickall), CALL(wireless_macauth_kickmac), CALL(wireless_restart_8021xd),
    CALL(wireless_restart_bandstrg), CALL(wireless_update_beacon_kdx_ie_all),
    CALL(wireless_update_wps), CALL(write_diag_flag), CALL(wsc_profile_update),
    // With arguments.
    CALL(apcp_get_wsc_peerinfo_by_ifname, "ra0", as<wsc_peer_info>(out)), CALL(get_run_led_op, out),
    CALL(check_default_button, 1, 2), CALL(check_wps_button, 1, 2), CALL(convert_2byte_hex, "5a"),
    CALL(ethswitch_del_mac, kWired), CALL(get_bootconfig, "diag", out, 32), CALL(get_wl_ifname, 1U),
    CALL(get_hwaddr_flash, "ra0", out), CALL(get_hwaddr_flash_raw, "ra0", as<uint8_t>(out)),
    CALL(get_kdx_devname, "Config", out, 32), CALL(get_one_line, "line\n", out, 32),
    CALL(get_racfg_filename, 0), CALL(get_wl_bridge_ifname_by_wlmode, 1), CALL(init_mtk_wlif, 0),
    CALL(get_wl_idx_by_ifname, "rai1"), CALL(get_wl_ifname_by_wlmode, 1), CALL(mt_rssi_to_pwr, -50),
    CALL(get_wl_mode_by_ifname2, "rai1"), CALL(install_eeprom, nullptr), CALL(platform_preinit, 1),
    CALL(mt762x_get_apcli_status, "apcli0", out, out + 32), CALL(mt762x_update_wl_eeprom, kBytes),
    CALL(mt762x_set_eeprom_mac, "ra0", kBytes), CALL(mtd_get_size, "Config"), CALL(turn_led, 18, 1),
    CALL(mtd_writebuf, "data", 0, 4, "Config"), CALL(platform_all_lan_led_control, 1),
    CALL(platform_all_usb_led_control, 1), CALL(platform_all_wan_led_control, 1),
    CALL(platform_all_wl_led_control, 1), CALL(platform_init_led_control, 1),
    CALL(platform_lan_led_control, 1, 1), CALL(platform_power_led_control, 1),
    CALL(platform_run_led_control, 1), CALL(platform_set_wireless, nullptr, "rai0"),
    CALL(platform_usb_led_control, 0, 1), CALL(platform_wan_led_control, 1, 1),
    CALL(platform_wireless_api_apply_mbssid, 0), CALL(platform_wireless_set_led, "ra0", 1),
    CALL(platform_wl_led_control, 0, 1), CALL(restore_backup_config, "/tmp/backup"),
    CALL(rt61_get_wireless_link_speed, "ra0"), CALL(rt61_wireless_api_clear_station_info, "ra0"),
    CALL(rt61_wireless_api_get_ap_norm_power, "00:11:22:AA:BB:CC"), CALL(set_iptv_system, 1),
    CALL(rt61_wireless_api_set_txpower, "ra0", 50), CALL(set_bootconfig, "set", "a=1&b=2"),
    CALL(set_hwaddr_flash, "00:9F:33:01:02:03"), CALL(set_hwaddr_flash_raw, kBytes),
    CALL(set_port_led_all, 1), CALL(set_quolex_helper_bss, bss_set, 2), CALL(set_run_led_op, "wps"),
    CALL(set_sniff_port, 1), CALL(update_led_silent_control, 1, 1), CALL(write_config, nullptr, 0),
    CALL(trans_uuid_str_to_hex, "00010203-0405-0607-0809-0a0b0c0d0e0f", as<uint8_t>(out)),
    CALL(wireless_api_check_station_exist, "ra0", station_mac), CALL(wireless_apply_macauth, 0U),
    CALL(wireless_api_get_current_channelspec, "ra0", as<channel_spec>(out)),
    CALL(wireless_api_get_mbridge_status, "ra0", as<ap_entry>(out)),
    CALL(wireless_api_get_ssid, "apcli0", out), CALL(wireless_api_start_ap_scan, "ra0"),
    CALL(wireless_api_wait_scan_end, "ra0"), CALL(wireless_gen_pincode, "ra0"),
    CALL(wireless_get_scan_buf, "ra0", out, 4096), CALL(wireless_get_wps_pincode, "ra0"),
    CALL(wireless_get_wps_status, "ra0", as<uint32_t>(out)), CALL(wireless_prepare_wps, nullptr),
    CALL(wireless_macauth_set_policy, 0U, 1), CALL(wireless_set_igmpsnoop, "ra0", 1),
    CALL(wireless_set_wps_led, "ra0", 1), CALL(wireless_set_wps_uuid, "ra0", kBytes, 16),
    CALL(wireless_update_beacon_kdx_ie, "ra0"), CALL(wireless_wps_start, nullptr, &kPin),
    CALL(wireless_wps_stop, nullptr), CALL(wsc_set_oid, "ra0", 0x974, kBytes, 16),
    // With a result that promises an untouched output.
    FAILS(-1, get_link_status, 1, as<port_setting>(out)), FAILS(-1, read_config, out, 0, 8),
    FAILS(-1, mtd_readbuf, out, 0, 8, "Config"), FAILS(0, wireless_api_get_ifname, 1U, out),
    FAILS(0, wireless_get_dfs_info, "rai0", as<dfs_info>(out)),
    FAILS(0, wireless_get_wps_configured_ifname, out),
    FAILS(-1, wireless_get_wps_uuid, "ra0", as<uint8_t>(out), as<uint32_t>(out + 64)),
    FAILS(0, wirelesss_get_wl_bh_sta, 0, as<station_entry>(out)),
    FAILS(-1, wsc_get_oid, "ra0", 0x974, out, as<uint32_t>(out + 64)),
    // On the switch, whose control socket may end the process.
    ENDS(ethswitch_get_all_macentry, as<switch_mac_entry>(out), 8, 0x7F), ENDS(init_portconfig),
    ENDS(ethswitch_get_mac_port_link, kWired), ENDS(ethswitch_get_port_num, kWired),
    ENDS(ethswitch_search_mac_table, kWired), ENDS(get_eport_stat, 1, as<port_counters>(out)),
    ENDS(mt753x_get_all_macentry, as<switch_mac_entry>(out), 8, 0x7F),
    ENDS(set_port_config, 1, &kOff), ON_SWITCH(reg_read, 0x3000U, as<uint32_t>(out)),
    ON_SWITCH(reg_read_ioctl, 0x3000U, as<uint32_t>(out)), ON_SWITCH(reg_write, 0x3000U, 1U),
    ON_SWITCH(reg_write_ioctl, 0x3000U, 1U),
    // In a frame of their own.
    {"apcp_get_stalist_from_ethswitch", RUN(list_wired_stations), kNone, true},
    {"mtd_open", RUN(open_and_close)},
    {"wireless_api_get_station_list",
     RUN(list_of<station_list>, out, wireless_api_get_station_list)},
    {"platform_wireless_api_get_ap_list",
     RUN(list_of<ap_list>, out, platform_wireless_api_get_ap_list)},
    {"switch_ioctl_fini", RUN(on_switch, mtk_optimize_set), kNone, true},
    {"switch_ioctl_init", RUN(on_switch, mtk_optimize_set), kNone, true},
};
// clang-format on

#undef CALL
#undef ENDS
#undef FAILS
#undef ON_SWITCH
#undef RUN

}  // namespace fault
