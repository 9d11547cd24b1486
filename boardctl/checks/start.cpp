// Checks of what a start of the platform does before the radios, and of the panel.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <map>
#include <optional>

#include "board/model/flash.h"
#include "board/model/modules.h"
#include "board/model/pins.h"
#include "board/model/radio_driver.h"
#include "board/model/switch.h"
#include "board/store/journal.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "board/store/words.h"
#include "boardctl/checks/checks.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

using board::KeyFile;
using board::PinColumn;

constexpr size_t kDriverFileLimit = 0x10000;

bool is_silent(const led_silent_control& silence) {
    if (silence.mode < 2) return silence.mode == 1;
    const std::time_t now = std::time(nullptr);
    const auto hour = static_cast<uint32_t>(std::gmtime(&now)->tm_hour);
    const uint32_t since = (hour + 24 - silence.start_hour % 24) % 24;
    const uint32_t length = (silence.end_hour + 24 - silence.start_hour % 24) % 24;
    return length == 0 || since < length;
}

// What the LEDs were last told to show, by the journal. Silent hours and people switch them alike,
// so nothing else says how they should be.
struct LedOrders {
    std::optional<std::string> run;
    std::map<uint32_t, uint32_t> registers;  // of the switch
    std::map<int, int> pins;
};

LedOrders led_orders(const Session& session) {
    LedOrders orders;
    for (const std::string& line : board::journal_lines()) {
        const auto words = board::split_words(line).value_or(std::vector<std::string>{});
        const auto begins = [&](std::initializer_list<std::string_view> start, size_t size) {
            return words.size() == size && std::equal(start.begin(), start.end(), words.begin());
        };
        if (begins({"led_ctl", "set", "run"}, 4)) orders.run = words[3];
        if (begins({"switch", "reg", "w"}, 5) || begins({"register"}, 3)) {
            const auto number = board::to_number<uint32_t>(words[words.size() - 2], 16);
            const auto value = board::to_number<uint32_t>(words.back(), 16);
            if (number && value) orders.registers[*number] = *value;
        }
        int pin = -1;
        int level = 0;
        if (begins({"write_file", board::kPinFile}, 3) &&
            std::sscanf(words[2].c_str(), "out %d %d", &pin, &level) == 2)
            orders.pins[pin] = level;
        if (!begins({"wireless_set_led"}, 3)) continue;
        const int wl_mode = session.host.get_wl_mode_by_ifname(words[1].c_str());
        pin = session.host.getsi_wifi_led_gpio(0, wl_mode);
        orders.pins.erase(pin);  // what "-1" shows is the host's decision
        if (words[2] != "-1") orders.pins[pin] = words[2] == "0" ? 1 : 0;
    }
    return orders;
}

void check_lights(const Session& session, Faults& faults) {
    const LedOrders orders = led_orders(session);
    const auto run = KeyFile::load_or_empty(board::live_path("leds")).get("run");
    faults.require(!orders.run || run == orders.run, "the run LED is not as it was set");
    for (const auto& [pin, level] : orders.pins) {
        const int now = board::pin_value(pin, PinColumn::output);
        faults.require(now == -1 || now == level,
                       "the LED at pin " + std::to_string(pin) + " is not as it was set");
    }
    board::Switch board_switch;
    for (const uint32_t number : {0x7c10U, 0x7c14U, 0x7c18U, 0x7d00U}) {
        const auto order = orders.registers.find(number);
        faults.require(
            order == orders.registers.end() || order->second == board_switch.read_register(number),
            "the port LEDs are not as they were set");
    }
}

void check_button(Faults& faults, const char* name, int pin, int told) {
    if (pin == -1) return;
    const int pressed = board::pin_value(pin, PinColumn::input) == 0 ? 1 : 0;
    faults.require(told == pressed, std::string("the ") + name + " button is not seen as it is");
}

}  // namespace

void check_calibration(Session& session, Faults& faults) {
    const auto partition = board::find_partition("Factory");
    std::string factory = partition ? board::read_partition(*partition) : "";
    std::string name;
    std::vector<std::pair<std::string, size_t>> offsets;
    for (const Radio& radio : radios_of(session)) {
        const size_t start = calibration_place(radio);
        const std::string head = factory.substr(std::min(start, factory.size()), kCalibrationHead);
        faults.require(is_calibration(head), radio.main_ifname + " has no calibration data");
        if (name.empty())
            name = board::radio_index_value(radio.main_ifname, "EEPROM_name").value_or("");
        offsets.emplace_back(radio.main_ifname, start);
    }
    // What has been written to the calibration data since reaches the driver's file at a start.
    const std::string extracted = board::read_text("/lib/firmware/" + name).value_or("");
    for (const auto& [ifname, start] : offsets) {
        const KeyFile words = board::eeprom_words(ifname);
        for (const std::string& line : words.lines()) {
            const size_t place = start + std::strtoul(line.c_str(), nullptr, 16);
            if (place + 2 <= std::min(factory.size(), extracted.size()))
                factory.replace(place, 2, extracted, place, 2);
        }
    }
    faults.require(extracted == factory.substr(0, kDriverFileLimit),
                   "the driver's calibration file is not the start of the partition");
}

// All that can be, in their order.
void check_modules(Session& session, Faults& faults) {
    const auto broken = board::module_faults();
    std::vector<std::string> wanted;
    for (const char* const name : *session.library.get<decltype(::module_list)>("module_list"))
        if (!broken.contains(name)) wanted.emplace_back(name);
    faults.require(board::read_lines(board::live_path("modules")) == wanted,
                   "the modules were not loaded, all and in their order");
}

void check_pins(Session& session, Faults& faults) {
    const hw_info hw = hardware_of(session);
    std::vector<int> pins = {hw.run_led_gpio, hw.wps_button_gpio};
    for (const hw_wl_led& led : hw.wl_led)
        if (field_text(led.driven) == "gpio") pins.push_back(led.gpio);
    for (const int pin : pins)
        faults.require(pin == -1 || board::pin_value(pin, PinColumn::function) == 1,
                       "pin " + std::to_string(pin) + " is not in its GPIO function");
}

void check_leds(Session& session, Faults& faults) {
    char operation[64] = {};
    session.platform.get_run_led_op(operation);
    if (operation == std::string("wps")) return;
    led_silent_control silence{};
    session.host.get_led_silent_control(&silence, 0);
    const int state = session.platform.get_run_led_state();
    faults.require(state == (is_silent(silence) ? 2 : 0),
                   "the run LED's state is " + std::to_string(state));
    check_lights(session, faults);
}

void check_buttons(Session& session, Faults& faults) {
    constexpr int kSamples = 5;
    const hw_info hw = hardware_of(session);
    const int pressed = session.platform.pushed_reset_button();
    check_button(faults, "reset", hw.reset_button_gpio, pressed);
    check_button(faults, "WPS", hw.wps_button_gpio, session.platform.pushed_wps_button());
    const Step step = session.perform(session.platform.check_default_button, 2, kSamples);
    std::vector<std::string> expected;
    for (int sample = 1; pressed != 0 && sample < kSamples; ++sample)
        expected.push_back("Reset Pushed " + std::to_string(sample));
    faults.require(step.result == pressed && step.messages == expected,
                   "the reset button is not seen held as it is");
}

}  // namespace boardctl
