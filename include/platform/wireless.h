/*
 * Wi-Fi: bring-up and apply, stations, site survey, access control, status and services.
 *
 * The functions run board commands and call the host on the caller's thread. Bringing a radio up
 * takes a second when its first BSS is on, and up to ten more while an automatic channel is
 * chosen. Interface names that hold a "/" never name a driver's output file: such a query runs
 * nothing and fails. Where a link, FIFO or device stands in such a file's place it is removed;
 * where a directory does, the query runs nothing and fails, and a scan counts as ended.
 */
#pragma once

#include <stdint.h>

#include "platform/export.h"
#include "platform/records.h"

PLATFORM_BEGIN_DECLS

/*
 * Once, at the start of the board: creates the bridge br0 with eth0, brings every radio of the
 * host's list up (init_mtk_wlif; a radio without an interface is reported and initialised all
 * the same), then sets the transmit power control and registers the hardware NAT. 0.
 */
PLATFORM_API int platform_init_wireless(void);

/*
 * Brings one radio up from the stored configuration: profile, then automatic channel, then
 * interfaces and bridge. The first radio also gets the helper BSSs while the configuration is the
 * factory default and the factory test mode is off. 0.
 */
PLATFORM_API int init_mtk_wlif(int32_t wl_mode);

/*
 * Applies a radio's configuration: automatic channel, then profile, then interfaces and bridge,
 * then the 802.1X service. conf, unless null, stands in for the stored record 0 this time only.
 * ifname is the radio's main interface; null does nothing. 0.
 */
PLATFORM_API int platform_set_wireless(const struct wireless_conf* conf, const char* ifname);

/*
 * Appends the helper BSS of the "sw" block to the count records in use, and the second one when
 * it is wanted: copies of record 0 with name, security and visibility of their own. The set has
 * room for four records; a helper BSS that finds none is left out. Returns the new count, which
 * is the old one for a null set and for a count below 0 or above 3.
 */
PLATFORM_API int set_quolex_helper_bss(struct wireless_conf* records, int count);

/* Hands the "hw" block's transmit power control texts to the radios where it is enabled. 0. */
PLATFORM_API int mtk_tpc_patch(void);

/* Registers every radio's main interface with the hardware NAT engine. 0. */
PLATFORM_API int init_mt762x_hwnat(void);

/*
 * Lists the stations of the radio whose main interface list->ifname names, at most 128 of them:
 * the driver's table is read no further. Columns that a line lacks leave their fields alone; a
 * MAC text that is too short is written as far as its pairs go. 0 after a parse, 1 with count 0
 * when the driver's table cannot be opened or read.
 */
PLATFORM_API int wireless_api_get_station_list(struct station_list* list);

/*
 * 1 when the station with that MAC text, or any station for null, is associated with the BSS
 * interface, else 0. The text is turned to upper case in place.
 */
PLATFORM_API int wireless_api_check_station_exist(const char* ifname, char* mac);

/* Copies the radio's first repeater-client entry. 1, or 0 with nothing written. */
PLATFORM_API int wirelesss_get_wl_bh_sta(int32_t wl_mode, struct station_entry* entry);

/* Resets the driver's station counters. 0. */
PLATFORM_API int rt61_wireless_api_clear_station_info(const char* ifname);

/* Signal figure of an RSSI in dBm: (rssi + 90) x 2.5 towards zero, at most 100. */
PLATFORM_API int mt_rssi_to_pwr(int rssi);

PLATFORM_API int rt61_get_hostinfo_from_wireless(void); /* 0 */

/* Starts a site survey and gives it a second. 0. */
PLATFORM_API int wireless_api_start_ap_scan(const char* ifname);
PLATFORM_API int platform_wireless_api_stop_ap_scan(void); /* 0 */

/* Waits at most 15 seconds. 0 when the survey has ended, 1 when it still runs. */
PLATFORM_API int wireless_api_wait_scan_end(const char* ifname);

/*
 * Lists the surveyed networks, at most 256, from an empty list on (a count that the caller left
 * is dropped). Lines whose channel the host rejects are skipped. 0 after a parse and when the
 * driver cannot be asked (count 0), 1 with count 0 when it has no text or there is no memory.
 */
PLATFORM_API int platform_wireless_api_get_ap_list(struct ap_list* list);

/*
 * Clears line[size], copies the first line of the text with its line feed into it when it is
 * shorter than size, and returns the start of the next. Null when no line ends in the text.
 */
PLATFORM_API const char* get_one_line(const char* text, char* line, int size);

/* Signal figure of the surveyed network with exactly that BSSID, 0 when there is none. */
PLATFORM_API int rt61_wireless_api_get_ap_norm_power(const char* bssid);

/*
 * Sets a BSS's MAC access policy (0 off, 1 deny the listed, 2 allow only the listed) in the
 * driver and in the profile. 0.
 */
PLATFORM_API int wireless_macauth_set_policy(uint32_t wl_index, int policy);

/*
 * Replaces a BSS's address list in the driver and in the profile by the host's, up to 227
 * addresses. Without memory the driver's list stays cleared and the profile as it was. 0.
 */
PLATFORM_API int wireless_apply_macauth(uint32_t wl_index);

/* The driver drops nobody on request: these do nothing, whatever they are passed. Return 0. */
PLATFORM_API int wireless_macauth_kickall(PLATFORM_ANY(void));
PLATFORM_API int wireless_macauth_kickmac(PLATFORM_ANY(void));

/*
 * The channel that the radio runs on, or the configured one while it is down. An 80 MHz width is
 * reported only for the modes that have it. 0.
 */
PLATFORM_API int wireless_api_get_current_channelspec(const char* ifname,
                                                      struct channel_spec* spec);

/* Radar detection state. 1 when the driver told it, else 0 with nothing written; "ra0" has none. */
PLATFORM_API int wireless_get_dfs_info(const char* ifname, struct dfs_info* info);

/*
 * The two values of the driver's "Ap Client Status" line, the second being the RSSI in dBm, in
 * buffers of 32 bytes (31 characters), either of which may be null. 1 when both were there.
 */
PLATFORM_API int mt762x_get_apcli_status(const char* ifname, char* first, char* second);

/* The repeater client's link: SSID, BSSID, channel, signal. 1 when it is up, else 0. */
PLATFORM_API int wireless_api_get_mbridge_status(const char* ifname, struct ap_entry* entry);

/* The SSID that the interface is on, as the host tells it. */
PLATFORM_API int wireless_api_get_ssid(const char* ifname, char* ssid);

/* Link speed of the repeater client, 0 when it is not connected. */
PLATFORM_API int rt61_get_wireless_link_speed(const char* ifname);
PLATFORM_API int wireless_api_get_keyinfo_status(void); /* 1 */

/* Sets the transmit power in percent, at most 100. 0. */
PLATFORM_API int rt61_wireless_api_set_txpower(const char* ifname, int percent);

/* Switches IGMP snooping on every BSS of the radio and adds its two groups either way. 0. */
PLATFORM_API int wireless_set_igmpsnoop(const char* ifname, int enable);

/* Restarts each radio's 802.1X authenticator, if it has one, and renews its firewall rules. 0. */
PLATFORM_API int wireless_restart_8021xd(void);

/* Stops the band-steering daemon and starts it again when the host wants it. 0. */
PLATFORM_API int wireless_restart_bandstrg(void);

/* Lights the radio's LED, if it has a pin. 0. */
PLATFORM_API int platform_wireless_set_led(const char* ifname, int on);

/* Puts the host's vendor element into the beacons of a BSS: 0, or -1 when the driver refuses. */
PLATFORM_API int wireless_update_beacon_kdx_ie(const char* ifname);
PLATFORM_API int wireless_update_beacon_kdx_ie_all(void); /* of all BSSs; 0 */

/* Takes all radios out of service. 0. */
PLATFORM_API int wireless_api_wireless_disable(void);

/* Has the host store and so re-apply the radio's configuration. 0. */
PLATFORM_API int platform_wireless_api_apply_mbssid(int32_t wl_mode);

PLATFORM_END_DECLS
