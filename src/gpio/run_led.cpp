#include <time.h>

#include <string_view>

#include "platform/gpio.h"
#include "platform/switch.h"
#include "src/host/factory_mode.h"
#include "src/host/host_buffer.h"
#include "src/host/runner.h"
#include "src/support/text.h"

using namespace platform;

namespace {

constexpr const char* kOperationKey = "run_led_op";
constexpr size_t kOperationSize = 32;

enum RunLedState { kNormal = 0, kWpsRunning = 1, kSilent = 2 };

// The last state that update_led_silent_control() applied; the LEDs start on.
constinit int led_enabled = 1;

// A period whose end is not after its start goes across midnight; equal hours are a whole day.
bool is_within(uint32_t hour, uint32_t start, uint32_t end) {
    return start < end ? hour >= start && hour < end : hour >= start || hour < end;
}

bool is_silent(const led_silent_control& control) {
    if (control.mode <= 1) return control.mode == 1;
    const time_t now = time(nullptr);
    const tm* const utc = gmtime(&now);
    return utc != nullptr &&
           is_within(static_cast<uint32_t>(utc->tm_hour), control.start_hour, control.end_hour);
}

}  // namespace

int set_run_led_op(const char* operation) {
    if (operation != nullptr) istatus_set_value_direct(kOperationKey, operation);
    return 0;
}

int get_run_led_op(char* operation) {
    if (operation == nullptr) return 0;

    HostBuffer<char[256]> stored;
    const bool found = istatus_get_value_direct(kOperationKey, stored.block) != -1;
    copy_text({operation, kOperationSize}, found ? field_text(stored.block) : "blink");
    return 0;
}

int get_run_led_state() {
    char operation[kOperationSize];
    get_run_led_op(operation);
    if (std::string_view(operation) == "wps") return kWpsRunning;

    led_silent_control control = {};
    get_led_silent_control(&control, 1);
    return is_silent(control) ? kSilent : kNormal;
}

int update_led_silent_control(int force, int on) {
    if (in_factory_mode()) return 0;
    if (force == 0 && on == led_enabled) return 0;

    led_enabled = on;
    wireless_set_led("ra0", -1);
    wireless_set_led("rai0", -1);
    run_host(Command<128>("led_ctl set run %s", on != 0 ? "slow" : "off"));
    run_host(Command<128>("led_ctl update"));
    return set_port_led_all(on);
}
