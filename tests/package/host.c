/* The smallest host: it lends the library what a call needs and sees what comes back. */
#include <stdio.h>
#include <string.h>

#include "platform/platform.h"

int write_file(const char* path, const char* text);

static char written[128];

int write_file(const char* path, const char* text) {
    snprintf(written, sizeof written, "%s < %s", path, text);
    return 7;
}

int main(void) {
    const int result = turn_led(14, 1);

    printf("turn_led() = %d, %s\n", result, written);
    return platform_get_drv() == &platform_drv && result == 7 &&
                   strstr(written, "mt_gpio < ") != NULL
               ? 0
               : 1;
}
