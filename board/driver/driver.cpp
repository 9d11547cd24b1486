#include "board/driver/driver.h"

#include "board/driver/switch.h"
#include "board/driver/wireless.h"

namespace board {
namespace {

// The first driver that knows the request answers it.
constexpr std::optional<int> (*kDrivers[])(unsigned long request, void* argument) = {
    switch_ioctl,
    wireless_ioctl,
};

}  // namespace

std::optional<int> driver_ioctl(unsigned long request, void* argument) {
    for (const auto driver : kDrivers)
        if (const auto result = driver(request, argument)) return result;
    return std::nullopt;
}

}  // namespace board
