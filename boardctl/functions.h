// The functions of both libraries that boardctl calls, by their declared names and types.
#pragma once

#include "board/host/entry.h"
#include "boardctl/library.h"
#include "platform/flash.h"
#include "platform/gpio.h"
#include "platform/platform.h"
#include "platform/switch.h"
#include "platform/wireless.h"
#include "platform/wlmap.h"
#include "platform/wps.h"
#include "src/host/host.h"

namespace boardctl {

template <class Type>
class Function;

// Looked up when it is made. One that is missing, as in a host that is still being written, throws
// Missing when it is called.
template <class Result, class... Parameters>
class Function<Result(Parameters...)> {
public:
    Function(const Library& library, Library::Part part, const char* its_name)
        : name(its_name),
          library_(library),
          part_(part),
          place_(library.find_if_any(part, its_name)) {}

    Result operator()(Parameters... arguments) const {
        void* const place = place_ != nullptr ? place_ : library_.find(part_, name);
        return reinterpret_cast<Result (*)(Parameters...)>(place)(arguments...);
    }

    const char* const name;

private:
    const Library& library_;
    const Library::Part part_;
    void* const place_;
};

#define F(name) Function<decltype(::name)> name{library, kPart, #name};
// clang-format off

struct Platform {
    static constexpr auto kPart = Library::Part::platform;
    const Library& library;
    F(apcp_get_stalist_from_ethswitch) F(apcp_get_wsc_peerinfo_by_ifname) F(check_default_button)
    F(check_eeprom) F(check_wps_button) F(clear_port_statistics) F(ethswitch_clear_mactable)
    F(ethswitch_del_mac) F(ethswitch_get_all_macentry) F(ethswitch_get_mac_port_link)
    F(extract_eeprom) F(get_bootconfig) F(get_eport_stat) F(get_link_status) F(get_racfg_filename)
    F(get_run_led_op) F(get_run_led_state) F(get_wl_bridge_ifname_by_wlmode)
    F(get_wl_idx_by_ifname) F(get_wl_ifname) F(get_wl_ifname_by_wlmode) F(init_ethernet_switch)
    F(init_mt7622) F(init_portconfig) F(init_sniff_port) F(install_eeprom) F(mtd_get_size)
    F(mtd_readbuf) F(platform_all_lan_led_control) F(platform_all_usb_led_control)
    F(platform_all_wan_led_control) F(platform_all_wl_led_control) F(platform_init_wireless)
    F(platform_run_led_control) F(platform_set_wireless) F(platform_wireless_api_get_ap_list)
    F(pushed_reset_button) F(pushed_wps_button) F(reinit_vlan) F(rt61_get_wireless_link_speed)
    F(set_bootconfig) F(set_ftm_cache) F(set_iptv_system) F(set_port_config) F(set_sniff_port)
    F(update_led_silent_control) F(wireless_api_get_current_channelspec)
    F(wireless_api_get_mbridge_status) F(wireless_api_get_ssid) F(wireless_api_get_station_list)
    F(wireless_api_start_ap_scan) F(wireless_api_wait_scan_end) F(wireless_apply_macauth)
    F(wireless_gen_pincode) F(wireless_get_dfs_info) F(wireless_get_wps_configured_ifname)
    F(wireless_get_wps_status) F(wireless_get_wps_uuid) F(wireless_macauth_set_policy)
    F(wireless_prepare_wps) F(wireless_wps_start) F(wireless_wps_stop)
};

struct Host {
    static constexpr auto kPart = Library::Part::host;
    const Library& library;
    F(board_check_configuration) F(board_load_state) F(board_save_state) F(board_set_mac_filter)
    F(board_set_state) F(easymesh_enabled) F(easymesh_get_almac) F(free_all_list) F(get_dev_port)
    F(get_iptv_config) F(get_led_silent_control) F(get_si) F(get_sniff_port)
    F(get_wl_mode_by_ifname) F(get_wlm_list) F(getsi_wifi_led_gpio) F(hwinfo_get_max_macauth)
    F(is_default_config) F(istatus_get_intvalue_direct) F(istatus_set_value_direct)
    F(iwconfig_client_get_channel) F(macauth_get_policy) F(macdb_free) F(macdb_read) F(mactostr)
    F(read_all_mbss_conf) F(read_portconfig) F(read_wireless_conf) F(set_wireless_conf)
    F(strtomac) F(wireless_check_channel_valid)
};

// clang-format on
#undef F

}  // namespace boardctl
