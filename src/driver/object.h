// Numbered objects of the Wi-Fi driver. wsc_get_oid() and wsc_set_oid() reach them.
#pragma once

#include <stdint.h>

#include "platform/wps.h"

namespace platform {

inline constexpr uint16_t kOidWscStatus = 0x0751;      // u32
inline constexpr uint16_t kOidWscPin = 0x0752;         // u32
inline constexpr uint16_t kOidWscUuid = 0x0753;        // UUID bytes
inline constexpr uint16_t kOidWscPeer = 0x075C;        // 200 bytes
inline constexpr uint16_t kOidFrequency = 0x0974;      // u16, MHz
inline constexpr uint16_t kOidVendorElement = 0x0EF0;  // 32 bytes, into the beacons

}  // namespace platform
