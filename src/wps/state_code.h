// The driver's WSC status as a state of the WPS run. The two readings differ on purpose: the WPS
// control takes every unknown status for a run in progress, the peer query knows where a run
// starts and that everything from 0x0101 on is an error.
#pragma once

#include <stdint.h>

namespace platform {

int wps_control_state(uint32_t status);
uint32_t wps_peer_state(int32_t status);

}  // namespace platform
