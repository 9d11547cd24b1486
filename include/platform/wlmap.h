/*
 * Radios, BSSs and their network interfaces.
 *
 * A radio is named by its wl mode: 0 the first (2.4 GHz), 1 the second (5 GHz), 999 the
 * band-steering pseudo-interface "band"; every other number reads as 0. A BSS is named by its
 * wl_index, (wl mode << 16) + BSS number 0 to 3.
 *
 * Names come from the radio index file /etc/wireless/l1profile.dat, which every lookup reads
 * afresh. A file that cannot be read is reported on standard output and in the system log, and
 * its names are empty. Returned texts live in static buffers: copy them at once, since
 * any call into the library may look up a name of the same kind.
 */
#pragma once

#include <stdint.h>

#include "platform/export.h"

PLATFORM_BEGIN_DECLS

/* The radio's main interface, its first BSS; "band" for 999. At most 127 characters. */
PLATFORM_API const char* get_wl_ifname_by_wlmode(int32_t wl_mode);

/* The radio's repeater-client interface: prefix and "0"; the prefix is cut to 126 characters. */
PLATFORM_API const char* get_wl_bridge_ifname_by_wlmode(int32_t wl_mode);

/* The path of the radio's driver profile; empty when unknown, never null. */
PLATFORM_API const char* get_racfg_filename(int32_t wl_mode);

/*
 * The wl_index of a BSS interface. 0 for a name without digits; -1 for a name that belongs to no
 * BSS and for null. Names are compared in their first 31 characters.
 */
PLATFORM_API int32_t get_wl_idx_by_ifname(const char* ifname);

/* The wl mode of an interface: 0 for null, 999 for "band", 65535 when it belongs to no BSS. */
PLATFORM_API int32_t get_wl_mode_by_ifname2(const char* ifname);

/*
 * Writes the BSS's interface name, prefix and BSS number, into a buffer of 32 bytes and returns
 * 1. A name of more than 31 characters, or a null buffer, is refused: 0, and the buffer keeps the
 * caller's bytes.
 */
PLATFORM_API int wireless_api_get_ifname(uint32_t wl_index, char* ifname);

/* The same name in a static buffer of 32 bytes. A refused one gives the empty text, never null. */
PLATFORM_API const char* get_wl_ifname(uint32_t wl_index);

PLATFORM_END_DECLS
