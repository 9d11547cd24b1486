// Automatic channel selection.
#pragma once

#include "platform/records.h"

namespace platform {

// Lets the host choose a channel into the record's channel spec; the interface is up meanwhile
// and then as it was before. 1.
int mtk_auto_channel_select(const char* ifname, wireless_conf& radio);

}  // namespace platform
