#include <string_view>

#include "platform/gpio.h"
#include "src/gpio/pin_file.h"
#include "src/host/hardware.h"
#include "src/support/message.h"
#include "src/support/pause.h"
#include "src/support/text.h"

using namespace platform;

namespace {

constinit int32_t reset_button_pin = kNoPin;
constinit int32_t wps_button_pin = kNoPin;

// A valid pin is asked of the host once, a missing one again each time.
int32_t cached_pin(int32_t& cache, int32_t hw_info::*field) {
    if (cache >= 0) return cache;
    cache = hardware().*field;
    return cache;
}

int32_t get_reset_button_gpio() {
    return cached_pin(reset_button_pin, &hw_info::reset_button_gpio);
}

int32_t get_wps_button_gpio() {
    return cached_pin(wps_button_pin, &hw_info::wps_button_gpio);
}

// Buttons are active low.
int is_pushed(int32_t pin) {
    PinState state;
    return pin >= 0 && gpio_read_pin(pin, state) == 1 && state.input_level() == 0;
}

int is_held(int (*pushed)(), const char* name, int interval_ms, int count) {
    for (int sample = 1;; ++sample) {
        if (pushed() == 0) return 0;
        if (sample >= count) return 1;
        pause_ms(interval_ms);
        print_out("%s Pushed %d\n", name, sample);
    }
}

void select_gpio(int32_t pin) {
    if (pin != kNoPin) gpio_write_cmd("mode", pin, 1);
}

}  // namespace

int pushed_reset_button() {
    return is_pushed(get_reset_button_gpio());
}

int pushed_wps_button() {
    return is_pushed(get_wps_button_gpio());
}

int check_default_button(int interval_ms, int count) {
    return is_held(pushed_reset_button, "Reset", interval_ms, count);
}

int check_wps_button(int interval_ms, int count) {
    return is_held(pushed_wps_button, "WPS", interval_ms, count);
}

int platform_get_rst_button_pressed() {
    return pushed_reset_button();
}

int platform_get_wps_button_pressed() {
    return pushed_wps_button();
}

int init_gpio_after_insmod() {
    const hw_info hw = hardware();
    select_gpio(hw.run_led_gpio);
    select_gpio(hw.wps_button_gpio);
    for (const hw_wl_led& led : hw.wl_led)
        if (field_text(led.driven) == "gpio") select_gpio(led.gpio);
    return 0;
}
