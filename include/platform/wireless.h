/*
 * Wi-Fi bring-up and apply.
 *
 * The functions run board commands and call the host on the caller's thread. Bringing a radio up
 * takes a second when its first BSS is on, and up to ten more while an automatic channel is
 * chosen.
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

PLATFORM_END_DECLS
