// The radio's interfaces in the LAN bridge br0.
#pragma once

#include "src/host/radios.h"

namespace platform {

// Creates br0 with eth0 and the EasyMesh AL MAC address, without its own multicast snooping.
void create_bridge();

// Takes all interfaces of the radio out of the bridge and down, then brings those back that the
// records enable. The repeater client as WAN stays outside the bridge.
void mtk_wlif_update_bridge(const char* ifname, int32_t wl_mode, const BssSet& set);

}  // namespace platform
