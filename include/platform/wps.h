/*
 * Wi-Fi Protected Setup and the Wi-Fi driver's numbered objects.
 *
 * Where a function takes an interface name or null, null means the main interface of every radio
 * in the order of the host's list.
 */
#pragma once

#include <stdint.h>

#include "platform/export.h"
#include "platform/records.h"

PLATFORM_BEGIN_DECLS

/* Arms the driver for WPS; radios with 802.1X are passed over. 0. */
PLATFORM_API int wireless_prepare_wps(const char* ifname);

/* Starts a run by push button or PIN; radios with 802.1X are passed over. 1; 0 for a null request.
 */
PLATFORM_API int wireless_wps_start(const char* ifname, const struct wps_start_request* request);

/* Stops a run, puts the configured SSID back where it changed and has the LED service act. 1. */
PLATFORM_API int wireless_wps_stop(const char* ifname);

PLATFORM_API int wireless_update_wps(void);                        /* 0 */
PLATFORM_API int wireless_set_wps_led(const char* ifname, int on); /* 0: the LED service does it */

/*
 * State of the run (enum wps_state; the host's own word for it unless that is "running"), -1 when
 * the driver does not answer. raw, unless null, takes
 * the driver's own status of the last interface that was asked.
 */
PLATFORM_API int wireless_get_wps_status(const char* ifname, uint32_t* raw);

/*
 * Writes the name of the first interface whose run ended well, cut to 31 characters, into a buffer
 * of 32 bytes. Returns 1, or 0 untouched.
 */
PLATFORM_API int wireless_get_wps_configured_ifname(char* ifname);

/* The interface's WPS PIN, present or newly made; -1 when the driver does not answer. */
PLATFORM_API int wireless_get_wps_pincode(const char* ifname);
PLATFORM_API int wireless_gen_pincode(const char* ifname);

/* The interface's WPS UUID in the driver: 0, or -1. The buffer takes the driver's whole answer. */
PLATFORM_API int wireless_get_wps_uuid(const char* ifname, uint8_t* uuid, uint32_t* length);
PLATFORM_API int wireless_set_wps_uuid(const char* ifname, const uint8_t* uuid, int length);

/*
 * Bytes of a UUID text of five groups parted by "-", as "%02x" pairs; pairs that are missing or
 * no number give 0. 0, or -1 untouched for fewer groups or more than 127 characters.
 */
PLATFORM_API int trans_uuid_str_to_hex(const char* text, uint8_t uuid[16]);

/* Value of the first two characters in hexadecimal, 0 when the first is no digit. */
PLATFORM_API int convert_2byte_hex(const char* text);

/*
 * Writes a driver object; a null payload sends length zeros (at most 65535). Reads one into a
 * buffer that must hold its whole answer, whose length goes to *length. 0, or -1 with nothing
 * written when there is no such interface, no memory or the driver refuses.
 */
PLATFORM_API int wsc_set_oid(const char* ifname, uint16_t oid, const void* payload, int length);
PLATFORM_API int wsc_get_oid(const char* ifname, uint16_t oid, void* answer, uint32_t* length);

/* The site-survey text: its length, 0 when the driver refuses, -1 without interface or buffer. */
PLATFORM_API int wireless_get_scan_buf(const char* ifname, char* buffer, uint16_t size);

/*
 * State, time and peer of the interface's WPS run. 1; 0 when the driver does not know the peer,
 * with state and time written and the texts untouched.
 */
PLATFORM_API int apcp_get_wsc_peerinfo_by_ifname(const char* ifname, struct wsc_peer_info* info);

PLATFORM_END_DECLS
