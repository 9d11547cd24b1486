#include "run/panel_section.h"

#include <cstdio>
#include <ctime>

#include "host/radio.h"
#include "live/interfaces.h"
#include "live/key_file.h"
#include "live/pins.h"
#include "live/switch.h"
#include "live/tree.h"
#include "platform/gpio.h"
#include "run/report.h"
#include "run/step.h"

namespace board::run {
namespace {

using Lines = std::vector<std::string>;

uint32_t hour_from_now(int hours) {
    const time_t then = std::time(nullptr) + hours * 3600;
    return static_cast<uint32_t>(std::gmtime(&then)->tm_hour);
}

std::string run_led() {
    return KeyFile::load_or_empty(live_path("leds")).get("run").value_or("as it started");
}

// "1 of 2 lit": the radios' LEDs, lit while their pin is low.
std::string radio_leds() {
    int lit = 0;
    for (const Radio& radio : state().radios)
        lit += pin_value(radio.led_gpio, PinColumn::output) == 0 &&
               pin_value(radio.led_gpio, PinColumn::is_output) == 1;
    return std::to_string(lit) + " of " + std::to_string(state().radios.size()) + " lit";
}

std::string radios_up() {
    int up = 0;
    for (const Radio& radio : state().radios) up += interface_is_up(radio.main_ifname);
    return std::to_string(up) + " of " + std::to_string(state().radios.size()) + " lit";
}

// The first LED register of the switch, as each chip has it.
std::string port_leds() {
    const bool old_chip = std::string(state().hw.switch_chip) == "mt7530";
    return Switch().setting(old_chip ? "register.7d00" : "register.7c10");
}

std::string port_leds_for(bool on) {
    if (std::string(state().hw.switch_chip) == "mt7530") return on ? "77777" : "66666";
    return on ? "11111111" : "11011111";
}

struct Hour {
    const char* name;
    LedSilence silence;
    int state;
    int on;
};

Lines try_leds(const Platform& platform, Capture& capture) {
    // Two hours, so that the one that runs out meanwhile makes no difference.
    const Hour hours[] = {
        {"before the silent hours", {2, hour_from_now(2), hour_from_now(4)},   0, 1},
        {"in the silent hours",     {2, hour_from_now(0), hour_from_now(2)},   2, 0},
        {"after the silent hours",  {2, hour_from_now(-3), hour_from_now(-1)}, 0, 1},
    };
    Lines faults;
    std::vector<std::vector<std::string>> rows = {
        {"", "Run LED state", "Run LED", "Radio LEDs", "Port LEDs"}
    };
    const auto before = state().led_silence;
    for (const Hour& hour : hours) {
        state().led_silence = hour.silence;
        const int led_state = PLATFORM_CALL(platform, get_run_led_state)();
        const bool on = led_state != 2;
        const Step step = perform(
            capture, "", [&] { return PLATFORM_CALL(platform, update_led_silent_control)(1, on); });
        rows.push_back(
            {hour.name, std::to_string(led_state), run_led(), radio_leds(), port_leds()});
        const bool good = led_state == hour.state && on == (hour.on != 0) &&
                          run_led() == (on ? "slow" : "off") && port_leds() == port_leds_for(on) &&
                          radio_leds() == (on ? radios_up() : "0 of 2 lit") &&
                          step.messages.empty() && step.result == 0;
        if (!good) faults.push_back(std::string("the LEDs are wrong ") + hour.name);
    }
    state().led_silence = before;
    heading("LEDs");
    table(rows);
    return faults;
}

// Held for so many samples; "%d" messages come while the button is held.
Lines try_button(const Platform& platform, Capture& capture) {
    constexpr int kSamples = 5;
    constexpr int kInterval = 2;  // milliseconds
    const int pin = state().hw.reset_button_gpio;
    Lines faults;
    std::vector<std::vector<std::string>> rows = {
        {"Reset button", "check_default_button", "Messages"}
    };
    for (const bool held : {false, true}) {
        set_pin_input(pin, held ? 0 : 1);
        const Step step = perform(capture, "", [&] {
            return PLATFORM_CALL(platform, check_default_button)(kInterval, kSamples);
        });
        rows.push_back({held ? "held" : "released", std::to_string(step.result),
                        std::to_string(step.messages.size())});
        Lines expected;
        for (int sample = 1; held && sample < kSamples; ++sample)
            expected.push_back("Reset Pushed " + std::to_string(sample));
        if (step.result != held || step.messages != expected)
            faults.push_back("the reset button is not seen as it is");
    }
    set_pin_input(pin, 1);
    heading("Reset button, " + std::to_string(kSamples) + " samples");
    table(rows);
    return faults;
}

}  // namespace

Lines try_panel(const Platform& platform, Capture& capture) {
    Lines faults = try_leds(platform, capture);
    const Lines more = try_button(platform, capture);
    faults.insert(faults.end(), more.begin(), more.end());
    return faults;
}

}  // namespace board::run
