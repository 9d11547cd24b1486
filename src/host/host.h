// The host firmware's common library: declared here once, defined by the process that loads us.
//
// Texts are NUL-terminated; output buffers are the caller's and hold what each line says.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "platform/records.h"

extern "C" {

// Head of a loaded profile: both pointers null before genconfig_read_file().
struct genconfig_list {
    void* first;
    void* last;
};

// Profile-style files, one KEY=VALUE a line; in memory, then (…_direct, …_item) straight on disk.
int genconfig_read_file(const char* path, genconfig_list* list);
int genconfig_set_value(genconfig_list* list, const char* key, const char* value);
int genconfig_set_intvalue(genconfig_list* list, const char* key, int32_t value);
int genconfig_write_file(const char* path, genconfig_list* list);
void genconfig_free_ll(genconfig_list* list);
int genconfig_remove_item(const char* path, const char* key);
int genconfig_set_value_direct(const char* path, const char* key, const char* value);
int genconfig_set_intvalue_direct(const char* path, const char* key, int32_t value);
int genconfig_get_value_direct(const char* path, const char* key, char* value);  // -1: missing

// Wireless configuration records.
int read_wireless_conf(wireless_conf* record, const char* ifname);
int set_wireless_conf(const wireless_conf* record, const char* ifname);
int read_all_mbss_conf(const char* ifname, wireless_conf* records, int max);  // number of BSSs
const int32_t* get_wlm_list();                                                // ends with -1
int get_wl_mode_by_ifname(const char* ifname);

// System information blocks: "hw", "sw", "wifi", "pi".
int get_si(const char* name, void* block);
int getsi_wifi_chipset_name(int unit, int wl_mode, char* name, int size);  // nonzero: written
int getsi_wifi_led_gpio(int unit, int wl_mode);                            // -1: none

// Regulatory limits, from the "wifi" block: percent or -1; 32 entries or null.
int get_wifi_regulated_pwr(const void* wifi, const char* country, int channel, int bandwidth_mhz);
const regulated_eeprom_entry* get_wifi_regulated_eeprom(const void* wifi, const char* country,
                                                        int channel, int bandwidth_mhz);

// Addresses and feature switches.
const char* get_my_mac();
int get_lan_ipconfig(char* address, char* netmask, char* gateway);
int get_igmp_proxy();
int easymesh_enabled();
const char* easymesh_get_almac();
int easymesh_get_kdx_ie(vendor_element* element);
int easymesh_make_wsc_kdx_type_str(char* text, int size);

// MAC filter and 802.1X.
int macauth_get_policy(uint32_t wl_index);  // 0 off, 1 deny the listed, 2 allow only the listed
mac_filter_table* macdb_read(uint32_t wl_index, int max);
void macdb_free(mac_filter_table* table);
int hwinfo_get_max_macauth();
int wireless_check_8021x_enabled(const wireless_conf* record);
int wireless_check_8021x_enabled2(int wl_mode);
int wireless_check_8021x_enable_for_band(const char* ifname, const wireless_conf* records,
                                         int count);
int wireless_set_radius_iptables(const char* ifname, const wireless_conf* records, int count);

// Channels, LEDs, band steering and the state of a running radio.
int wireless_api_get_best_channel2(const char* ifname, const char* country, int bandwidth_mhz,
                                   int32_t* channel);  // writes the five words from channel on
int wireless_check_channel_valid(const char* ifname, uint64_t argument, int bandwidth_mhz,
                                 int channel);
int wireless_set_led(const char* ifname, int state);
int get_band_steering_running(int unit);
int update_wl_conf_from_band_steering(wireless_conf* record, int unit);
int check_wireless_ifstatus(int wl_mode);
int iwconfig_client_get_essid(const char* ifname, char* essid);
int iwconfig_client_get_ap_mac(const char* ifname, char* mac);
int iwconfig_client_get_channel(const char* ifname, channel_spec* spec);
int iwconfig_client_get_link_speed(const char* ifname);

// Network interfaces and services.
int get_ifexist(const char* ifname);
int get_ifstatus(const char* ifname);
int ifup(const char* ifname);
int ifdown(const char* ifname);
int set_ifconfig(const char* ifname, const char* address, const char* netmask);
int is_default_config();
int stop_wan(const char* name);
int get_wan_type(const char* name, char* type);
int apply_network_configuration();
int signal_start(const char* service);
int signal_wan();

// Commands and the system log. The exit status of system2() is 0 on success.
[[gnu::format(printf, 1, 2)]] int system2(const char* format, ...);
[[gnu::format(printf, 1, 2)]] int system3(const char* format, ...);
[[gnu::format(printf, 2, 3)]] void syslog_msg(int level, const char* format, ...);

// Texts and MAC addresses.
char* sf_strncpy(char* destination, const char* source, size_t size);
void trim_crcf(char* text);
void strtoupper(char* text);
int strtomac(const char* text, uint8_t* mac);
int mactostr(const uint8_t* mac, char* text, int size);
int maccmp(const char* a, const char* b);  // 0: the same address

// Files, run-time status and stored configuration.
int file_exists(const char* path);
int get_file_string(const char* path, char* text, int size);  // 0: nothing read
int get_file_value(const char* path, int argument);           // always called with 1
int write_file(const char* path, const char* text);
int istatus_get_value_direct(const char* key, char* value);  // -1: missing
int istatus_get_intvalue_direct(const char* key);            // -1: missing
int istatus_set_value_direct(const char* key, const char* value);
int iconfig_set_intvalue_direct(const char* key, int value);
int get_led_silent_control(void* record, int unit);

// Named inter-process locks. The handle may be a number or a pointer.
intptr_t lock_file(const char* name);
int unlock_file(intptr_t handle);

// Ethernet ports. A user port index is i for LAN port i and 0x10000 + j for WAN port j.
int get_iptv_config();
int get_sniff_port();
int read_portconfig(int user_port, void* setting);
int get_dev_port(const hw_info* hw, int user_port);   // switch port, -1: none
int get_ux_port(const hw_info* hw, int switch_port);  // user port index, -1: none

// Host lists.
void* alloc_add_list(void* head, int size);
int free_all_list(void* head, void* destructor);

}  // extern "C"
