/*
 * The layout of the records, member by member and whole. It is compiled as C and as C++, for every
 * processor whose compiler is there: hosts of either language and the board agree on each byte.
 */
#include <assert.h>
#include <stddef.h>

#include "platform/records.h"

#define AT(record, member, offset) \
    static_assert(offsetof(struct record, member) == (offset), #record "." #member)
#define SIZE(record, size) static_assert(sizeof(struct record) == (size), #record)

SIZE(channel_spec, 20);

SIZE(wireless_conf, 1232);
AT(wireless_conf, enabled, 0);
AT(wireless_conf, ssid, 12);
AT(wireless_conf, wireless_mode, 140);
AT(wireless_conf, channel, 144);
AT(wireless_conf, ext_channel, 148);
AT(wireless_conf, channel_rest, 152);
AT(wireless_conf, ssid_broadcast, 164);
AT(wireless_conf, auth_mode, 168);
AT(wireless_conf, encryption, 172);
AT(wireless_conf, wep_default_key, 196);
AT(wireless_conf, wep_key_format, 200);
AT(wireless_conf, wep_key, 204);
AT(wireless_conf, wpa_psk, 312);
AT(wireless_conf, tx_power, 432);
AT(wireless_conf, bg_protection, 436);
AT(wireless_conf, tx_preamble, 440);
AT(wireless_conf, rts_threshold, 444);
AT(wireless_conf, frag_threshold, 448);
AT(wireless_conf, tx_burst, 452);
AT(wireless_conf, tx_burst_slot_time, 456);
AT(wireless_conf, beacon_period, 460);
AT(wireless_conf, pkt_aggregate, 464);
AT(wireless_conf, short_slot, 468);
AT(wireless_conf, apcli_enable, 472);
AT(wireless_conf, apcli_ssid, 476);
AT(wireless_conf, apcli_bssid, 604);
AT(wireless_conf, apcli_auth_mode, 624);
AT(wireless_conf, apcli_encryption, 628);
AT(wireless_conf, apcli_wep_default_key, 632);
AT(wireless_conf, apcli_wep_key_format, 636);
AT(wireless_conf, apcli_wep_key, 640);
AT(wireless_conf, apcli_wpa_psk, 748);
AT(wireless_conf, apcli_wan, 856);
AT(wireless_conf, wwan_ifname, 860);
AT(wireless_conf, bandwidth, 932);
AT(wireless_conf, ht_rdg, 936);
AT(wireless_conf, no_forwarding, 940);
AT(wireless_conf, wmm_capable, 944);
AT(wireless_conf, apsd_capable, 948);
AT(wireless_conf, dtim_period, 956);
AT(wireless_conf, country_code, 968);
AT(wireless_conf, bss_index, 976);
AT(wireless_conf, wps_configured, 1016);
AT(wireless_conf, wps_enable, 1020);
AT(wireless_conf, wps_configured2, 1024);
AT(wireless_conf, dfs_enable, 1028);
AT(wireless_conf, igmp_snoop, 1032);
AT(wireless_conf, radius_server, 1052);
AT(wireless_conf, radius_key, 1084);
AT(wireless_conf, radius_port, 1212);
AT(wireless_conf, beamforming, 1220);
AT(wireless_conf, stream_count, 1228);

SIZE(hw_tpc, 260);

SIZE(hw_wl_led, 20);

SIZE(hw_info, 1496);
AT(hw_info, switch_chip, 164);
AT(hw_info, tpc_2g.enable, 312);
AT(hw_info, tpc_2g.value, 316);
AT(hw_info, tpc_2g.duty, 444);
AT(hw_info, tpc_5g.enable, 648);
AT(hw_info, tpc_5g.value, 652);
AT(hw_info, tpc_5g.duty, 780);
AT(hw_info, usb_count, 940);
AT(hw_info, run_led_gpio, 1056);
AT(hw_info, reset_button_gpio, 1060);
AT(hw_info, wps_button_gpio, 1064);
AT(hw_info, wl_led, 1068);
AT(hw_info, usb_led_gpio, 1108);
AT(hw_info, lan_port_count, 1180);
AT(hw_info, wan_port_count, 1184);
AT(hw_info, iptv_port, 1188);

SIZE(mac_filter_entry, 24);
AT(mac_filter_entry, mac, 4);

SIZE(mac_filter_table, 8);

SIZE(vendor_element, 32);
AT(vendor_element, text, 16);

SIZE(regulated_eeprom_entry, 12);

SIZE(led_silent_control, 12);

SIZE(port_setting, 30);

SIZE(port_counters, 112);
AT(port_counters, rx_dropped, 40);
AT(port_counters, tx_packets, 72);
AT(port_counters, tx_collisions, 104);

SIZE(switch_mac_entry, 8);
AT(switch_mac_entry, info, 6);

SIZE(wired_station, 64);
AT(wired_station, kind, 8);
AT(wired_station, mac, 12);
AT(wired_station, user_port, 24);

SIZE(wired_station_list, 24);
AT(wired_station_list, first, 8);
AT(wired_station_list, second, 16);

SIZE(station_entry, 280);
AT(station_entry, wl_index, 52);
AT(station_entry, column3, 56);
AT(station_entry, column8, 60);
AT(station_entry, column9, 68);
AT(station_entry, column10, 72);
AT(station_entry, column9_v2, 80);
AT(station_entry, column10_v2, 88);
AT(station_entry, column6, 96);
AT(station_entry, column7, 100);
AT(station_entry, chain_best, 112);
AT(station_entry, chain, 116);
AT(station_entry, ssid, 148);

SIZE(station_list, 35880);
AT(station_list, ifname, 8);
AT(station_list, entries, 40);

SIZE(ap_entry, 248);
AT(ap_entry, bssid, 128);
AT(ap_entry, channel, 168);
AT(ap_entry, signal, 188);
AT(ap_entry, rssi, 192);
AT(ap_entry, seen_at, 196);
AT(ap_entry, network_type, 200);
AT(ap_entry, encryption, 204);
AT(ap_entry, auth_mode, 208);
AT(ap_entry, flags, 212);
AT(ap_entry, element, 216);

SIZE(ap_list, 63536);
AT(ap_list, ifname, 8);
AT(ap_list, channel_check, 40);
AT(ap_list, entries, 48);

SIZE(dfs_info, 12);

SIZE(wps_start_request, 8);

SIZE(wsc_peer_info, 328);
AT(wsc_peer_info, manufacturer, 8);
AT(wsc_peer_info, model_name, 72);
AT(wsc_peer_info, device_name, 136);
AT(wsc_peer_info, model_number, 200);
AT(wsc_peer_info, serial_number, 264);
