// The profile writer: one radio's driver profile from the host's configuration records.
#pragma once

#include <stdint.h>

#include "platform/records.h"

namespace platform {

// Rewrites the profile of the radio from records 0 to n - 1 (record 0 is always there and holds
// the radio's settings), then updates all radios' profiles on disk. Keys that it does not set
// stay. 0, whatever came of it.
int mtk_wireless_profile_update(int32_t wl_mode, const wireless_conf* records, int n);

}  // namespace platform
