#include "support/pause.h"

#include <unistd.h>

namespace platform {

void pause_ms(int milliseconds) {
    constexpr int kLongest = 1000000;  // in microseconds still a usleep() argument
    for (; milliseconds > kLongest; milliseconds -= kLongest) usleep(kLongest * 1000U);
    if (milliseconds > 0) usleep(static_cast<useconds_t>(milliseconds) * 1000);
}

}  // namespace platform
