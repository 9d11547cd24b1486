// Stands in for the kernel's drivers: answers the library's ioctl requests from the board's tree.
#pragma once

#include <optional>

namespace board {

// The result of ioctl(), with errno set for -1. Nothing for a request that no driver of the board
// knows; it is the caller's to forward or refuse.
std::optional<int> driver_ioctl(unsigned long request, void* argument);

}  // namespace board
