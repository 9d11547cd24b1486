#include "src/support/pause.h"

#include <errno.h>
#include <stdint.h>
#include <time.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr int64_t kSecond = 1000000;  // in microseconds

int64_t clock_us() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * kSecond + now.tv_nsec / 1000;
}

// sleep() does not say that less than a second is left, and usleep() not how much: errno does, and
// the clock.
void pause_us(int64_t length, bool whole_seconds) {
    const int kept = errno;
    const int64_t end = clock_us() + length;
    for (int64_t left = length; left > 0; left = end - clock_us()) {
        errno = 0;
        if (whole_seconds && left % kSecond == 0)
            sleep(static_cast<unsigned>(left / kSecond));
        else
            usleep(static_cast<useconds_t>(left));
        if (errno != EINTR) break;
    }
    errno = kept;
}

}  // namespace

void pause_ms(int milliseconds) {
    constexpr int kLongest = 1000000;  // in microseconds still a usleep() argument
    for (; milliseconds > kLongest; milliseconds -= kLongest)
        pause_us(int64_t{kLongest} * 1000, false);
    pause_us(int64_t{milliseconds} * 1000, false);
}

void pause_seconds(int seconds) {
    pause_us(seconds * kSecond, true);
}

}  // namespace platform
