/* The public headers are C: this file compiles as such. */
#include "platform/platform.h"

platform_slot platform_fourth_slot(void);

platform_slot platform_fourth_slot(void) {
    return platform_get_drv()->refresh_non_ipv4_input_rule;
}
