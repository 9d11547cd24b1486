#include <stddef.h>

#include "platform/frame.h"
#include "src/support/command.h"

namespace platform {
namespace {

// The delete fails when the rule was not there; only the insert counts.
int refresh_non_ipv4_input_rule() {
    run_shell(Command<64>("ebtables -D INPUT -p ! IPv4 -j ACCEPT"));
    return run_shell(Command<64>("ebtables -I INPUT -p ! IPv4 -j ACCEPT"));
}

}  // namespace
}  // namespace platform

constinit const platform_driver platform_drv = {
    .reserved0 = {},
    .refresh_non_ipv4_input_rule = platform::refresh_non_ipv4_input_rule,
    .reserved1 = {},
};
static_assert(sizeof(platform_driver) == 7 * sizeof(platform_slot));
static_assert(offsetof(platform_driver, refresh_non_ipv4_input_rule) == 3 * sizeof(platform_slot));

const platform_driver* platform_get_drv() {
    return &platform_drv;
}
