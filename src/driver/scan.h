// The driver's scan.
#pragma once

namespace platform {

// Polls the driver once a second, at most that many times. 0 when its scan has ended, 1 when it
// still runs.
int wireless_wait_scan_status(const char* ifname, int tries);

}  // namespace platform
