// The Ethernet driver's private requests: switch and PHY registers behind eth0.
#pragma once

#include <optional>

namespace board {

// The result of ioctl(), errno set on failure; nothing for a request that is not this driver's.
std::optional<int> switch_ioctl(unsigned long request, void* argument);

}  // namespace board
