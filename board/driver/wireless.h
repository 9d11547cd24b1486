// The Wi-Fi driver's private requests: numbered objects and the survey text.
#pragma once

#include <optional>

namespace board {

// The result of ioctl(), errno set on failure; nothing for a request that is not this driver's.
std::optional<int> wireless_ioctl(unsigned long request, void* argument);

}  // namespace board
