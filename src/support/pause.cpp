#include "support/pause.h"

#include <errno.h>
#include <time.h>

namespace platform {

void pause_ms(int milliseconds) {
    if (milliseconds <= 0) return;
    timespec left = {milliseconds / 1000, milliseconds % 1000 * 1000000L};
    while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) continue;
}

}  // namespace platform
