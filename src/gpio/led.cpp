#include <algorithm>
#include <iterator>

#include "platform/gpio.h"
#include "platform/switch.h"
#include "src/gpio/pin_file.h"
#include "src/host/hardware.h"
#include "src/host/radios.h"

using namespace platform;

namespace {

int turn_led_if_fitted(int32_t pin, int on) {
    return pin != kNoPin ? turn_led(pin, on) : -1;
}

// The wl mode of the radio in that place of the host's list; -1 when there is none.
int32_t wl_mode_at(int radio) {
    int place = 0;
    for (const int32_t wl_mode : RadioList())
        if (place++ == radio) return wl_mode;
    return -1;
}

}  // namespace

// LED pins are active low.
int turn_led(int pin, int on) {
    return gpio_write_cmd("out", pin, on != 0 ? 0 : 1);
}

int platform_run_led_control(int on) {
    return turn_led_if_fitted(hardware().run_led_gpio, on);
}

int platform_wl_led_control(int radio, int on) {
    const int32_t wl_mode = wl_mode_at(radio);
    if (wl_mode != 0 && wl_mode != 1) return wl_mode;
    return turn_led_if_fitted(hardware().wl_led[wl_mode].gpio, on);
}

int platform_lan_led_control(int, int on) {
    return set_port_led_all(on);
}

int platform_usb_led_control(int port, int on) {
    const hw_info hw = hardware();
    if (port < 0 || port >= static_cast<int>(std::size(hw.usb_led_gpio))) return -1;
    return turn_led_if_fitted(hw.usb_led_gpio[port], on);
}

int platform_all_wl_led_control(int on) {
    const hw_info hw = hardware();
    turn_led_if_fitted(hw.wl_led[0].gpio, on);
    return turn_led_if_fitted(hw.wl_led[1].gpio, on);
}

int platform_all_wan_led_control(int on) {
    return set_port_led_all(on);
}

int platform_all_lan_led_control(int on) {
    return set_port_led_all(on);
}

int platform_all_usb_led_control(int on) {
    const hw_info hw = hardware();
    const int count = std::min(hw.usb_count, static_cast<int>(std::size(hw.usb_led_gpio)));
    for (int port = 0; port < count; ++port) turn_led_if_fitted(hw.usb_led_gpio[port], on);
    return hw.usb_count;
}
