// User ports and the switch ports that they are wired to.
#pragma once

#include <algorithm>

#include "src/host/hardware.h"

namespace platform {

inline constexpr int kNoPort = -1;
inline constexpr int kFirstWanPort = 0x10000 + 1;
inline constexpr int kSwitchPorts = 7;

// How many user ports the board has, within their numbering.
inline int lan_ports(const hw_info& hw) {
    return std::min(hw.lan_port_count, 0xFFFF);
}
inline int wan_ports(const hw_info& hw) {
    return std::min(hw.wan_port_count, 0xFFFF);
}

// The switch port of a user port, kNoPort when the switch has none of that number.
inline int switch_port_of(const hw_info& hw, int user_port) {
    const int port = get_dev_port(&hw, user_port);
    return port >= 0 && port < kSwitchPorts ? port : kNoPort;
}

}  // namespace platform
