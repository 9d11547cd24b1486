// Checks of what a start of the platform does before the radios, and of the panel.
#include <algorithm>
#include <ctime>

#include "boardctl/verbs/checks.h"
#include "boardctl/verbs/host_records.h"
#include "boardctl/verbs/radio_names.h"
#include "frame/host.h"
#include "live/flash.h"
#include "live/interfaces.h"
#include "live/key_file.h"
#include "live/modules.h"
#include "live/pins.h"
#include "live/radio_driver.h"
#include "live/switch.h"
#include "live/tree.h"
#include "platform/flash.h"
#include "platform/gpio.h"

namespace boardctl {
namespace {

using board::KeyFile;
using board::PinColumn;

constexpr size_t kDriverFileLimit = 0x10000;

bool is_data(const std::string& head) {
    return head.size() == 4 && head != std::string(4, '\0') && head != std::string(4, '\xff');
}

bool is_silent(const led_silent_control& silence) {
    if (silence.mode < 2) return silence.mode == 1;
    const std::time_t now = std::time(nullptr);
    const auto hour = static_cast<uint32_t>(std::gmtime(&now)->tm_hour);
    const uint32_t since = (hour + 24 - silence.start_hour % 24) % 24;
    const uint32_t length = (silence.end_hour + 24 - silence.start_hour % 24) % 24;
    return length == 0 || since < length;
}

// The LEDs of the panel, once the library has switched all of them.
void check_lights(const Session& session, Faults& faults, bool on) {
    const auto run = KeyFile::load_or_empty(board::live_path("leds")).get("run");
    if (!run) return;
    require(faults, run == (on ? "slow" : "off"), "the run LED is " + *run);
    const bool is_old_chip = field_text(hardware_of(session).switch_chip) == "mt7530";
    const std::string lit = is_old_chip ? "77777" : "11111111";
    const std::string dark = is_old_chip ? "66666" : "11011111";
    require(faults, port_led_register(session) == (on ? lit : dark), "the port LEDs are wrong");
    for (const Radio& radio : radios_of(session)) {
        const int pin = HOST_CALL(session.library, getsi_wifi_led_gpio)(0, radio.wl_mode);
        require(faults, is_led_lit(pin) == (on && board::interface_is_up(radio.main_ifname)),
                "the LED of " + radio.main_ifname + " is wrong");
    }
}

void check_button(Faults& faults, const char* name, int pin, int told) {
    if (pin == -1) return;
    const int pressed = board::pin_value(pin, PinColumn::input) == 0 ? 1 : 0;
    require(faults, told == pressed, std::string("the ") + name + " button is not seen as it is");
}

}  // namespace

Faults check_calibration(Session& session) {
    Faults faults;
    const auto partition = board::find_partition("Factory");
    const std::string factory = partition ? board::read_partition(*partition) : "";
    std::string name;
    for (const Radio& radio : radios_of(session)) {
        const auto value = [&](const char* key) {
            return board::radio_index_value(radio.main_ifname, key).value_or("");
        };
        const auto start = std::stoul('0' + value("EEPROM_offset"), nullptr, 16);
        const std::string head = start < factory.size() ? factory.substr(start, 4) : "";
        require(faults, is_data(head), radio.main_ifname + " has no calibration data");
        if (name.empty()) name = value("EEPROM_name");
    }
    require(faults,
            board::read_text("/lib/firmware/" + name) == factory.substr(0, kDriverFileLimit),
            "the driver's calibration file is not the start of the partition");
    return faults;
}

// All that can be, in their order.
Faults check_modules(Session& session) {
    const auto broken = board::module_faults();
    std::vector<std::string> wanted;
    for (const char* const name : *PLATFORM_CALL(session.library, module_list))
        if (!broken.contains(name)) wanted.emplace_back(name);
    Faults faults;
    require(faults, board::read_lines(board::live_path("modules")) == wanted,
            "the modules were not loaded, all and in their order");
    return faults;
}

Faults check_pins(Session& session) {
    Faults faults;
    const hw_info hw = hardware_of(session);
    for (const int pin :
         {hw.run_led_gpio, hw.wps_button_gpio, hw.wl_led[0].gpio, hw.wl_led[1].gpio})
        require(faults, pin == -1 || board::pin_value(pin, PinColumn::function) == 1,
                "pin " + std::to_string(pin) + " is not in its GPIO function");
    return faults;
}

Faults check_leds(Session& session) {
    Faults faults;
    char operation[64] = {};
    PLATFORM_CALL(session.library, get_run_led_op)(operation);
    if (operation == std::string("wps")) return faults;
    led_silent_control silence{};
    HOST_CALL(session.library, get_led_silent_control)(&silence, 0);
    const bool silent = is_silent(silence);
    const int state = PLATFORM_CALL(session.library, get_run_led_state)();
    require(faults, state == (silent ? 2 : 0), "the run LED's state is " + std::to_string(state));
    check_lights(session, faults, !silent);
    return faults;
}

Faults check_buttons(Session& session) {
    constexpr int kSamples = 5;
    Faults faults;
    const Library& library = session.library;
    const hw_info hw = hardware_of(session);
    const int pressed = PLATFORM_CALL(library, pushed_reset_button)();
    check_button(faults, "reset", hw.reset_button_gpio, pressed);
    check_button(faults, "WPS", hw.wps_button_gpio, PLATFORM_CALL(library, pushed_wps_button)());
    const Step step = session.perform("check_default_button", [&] {
        return PLATFORM_CALL(library, check_default_button)(2, kSamples);
    });
    std::vector<std::string> expected;
    for (int sample = 1; pressed != 0 && sample < kSamples; ++sample)
        expected.push_back("Reset Pushed " + std::to_string(sample));
    require(faults, step.result == pressed && step.messages == expected,
            "the reset button is not seen held as it is");
    return faults;
}

}  // namespace boardctl
