// Automatic channel selection and the driver's scan.
#pragma once

#include "platform/records.h"

namespace platform {

// Lets the host choose a channel into the record's channel spec; the interface is up meanwhile
// and then as it was before. 1.
int mtk_auto_channel_select(const char* ifname, wireless_conf& radio);

// Polls the driver once a second, at most that many times. 0 when its scan has ended, 1 when it
// still runs.
int wireless_wait_scan_status(const char* ifname, int tries);

}  // namespace platform
