// MAC addresses (IEEE 802: 48 bits).
#pragma once

namespace platform {

inline constexpr int kMacSize = 6;  // bytes

}  // namespace platform
