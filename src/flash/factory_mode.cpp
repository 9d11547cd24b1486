#include <string_view>

#include "platform/flash.h"
#include "platform/gpio.h"
#include "src/flash/uboot_env.h"
#include "src/host/host.h"

using namespace platform;

namespace {

constexpr const char* kMarker = "/tmp/factory_default_mode";  // its presence is the mode

}  // namespace

int is_factory_test_mode() {
    return file_exists(kMarker) != 0;
}

int set_ftm_cache() {
    char value[32];
    if (!get_uboot_env("ftm", value, sizeof value)) return 0;
    if (std::string_view(value) != "on") return 0;

    write_file(kMarker, "on");
    stop_runled();
    return 1;
}

int get_usb_mode() {
    return 2;
}

int set_usb_mode() {
    return 0;
}

int platform_save() {
    return 0;
}

int platform_default() {
    return 0;
}

int platform_restore() {
    return 0;
}

int platform_reset() {
    return 0;
}

int platform_preinit(int value) {
    return value;
}
