#include "src/host/factory_mode.h"

#include <string_view>

#include "platform/flash.h"
#include "platform/gpio.h"
#include "src/flash/uboot_env.h"

using namespace platform;

int is_factory_test_mode() {
    return in_factory_mode();
}

int set_ftm_cache() {
    char value[32];
    if (!get_uboot_env("ftm", value, sizeof value)) return 0;
    if (std::string_view(value) != "on") return 0;

    write_file(kFactoryMarker, "on");
    stop_runled();
    return 1;
}
