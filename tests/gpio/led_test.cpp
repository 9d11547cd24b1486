// LEDs: every entry point, the pins' functions, the silent hours, the change to and from silence.
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <source_location>

#include "platform/flash.h"
#include "platform/gpio.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr const char* kPins = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
const Lines kPortsOn = {"$2 switch reg w 7c10 11111111", "$2 switch reg w 7c14 11110110",
                        "$2 switch reg w 7c18 00000111"};
const Lines kPortsOff = {"$2 switch reg w 7c10 11011111", "$2 switch reg w 7c14 10110000",
                         "$2 switch reg w 7c18 00000110"};

class Leds : public harness::Board {
protected:
    Leds() : hook_("write_file", write_pins) {
        written = {};
        write_result = 3;
    }

    // Of a call: its result, then what it wrote to the pin file and to the journal.
    void expect(int result, const Lines& lines, int got,
                const std::source_location& at = std::source_location::current()) {
        const testing::ScopedTrace trace(at.file_name(), static_cast<int>(at.line()), "");
        Lines done = std::exchange(written, {});
        std::ranges::copy(journal(), std::back_inserter(done));
        clear_journal();
        EXPECT_EQ(result, got);
        EXPECT_EQ(lines, done);
    }

    inline static int write_result;

private:
    static int write_pins(const char* path, const char* text) {
        written.push_back(path == std::string(kPins) ? text : path);
        return write_result;
    }

    inline static Lines written;
    const harness::LibraryHook hook_;
};

// Run LED 18, Wi-Fi LEDs 21 and none, USB LEDs 23, none and 24; the radios' list is 1, 7, 0.
TEST_F(Leds, AreDrivenByTheirPins) {
    host().hw.wl_led[1].gpio = -1;
    std::strcpy(host().hw.wl_led[0].driven, "driver");
    host().hw.usb_count = 3;
    host().hw.usb_led_gpio[2] = 24;
    host().wl_modes = {1, 7, 0};
    expect(3, {"out 7 0"}, turn_led(7, 1));
    expect(3, {"out 7 0"}, turn_led(7, 5));
    expect(3, {"out 7 1"}, turn_led(7, 0));
    expect(3, {"out 18 0"}, platform_run_led_control(1));
    expect(-1, {}, platform_wl_led_control(0, 1));
    expect(7, {}, platform_wl_led_control(1, 1));
    expect(3, {"out 21 1"}, platform_wl_led_control(2, 0));
    for (const int beyond : {3, -1}) expect(-1, {}, platform_wl_led_control(beyond, 0));
    expect(-1, {"out 21 0"}, platform_all_wl_led_control(1));
    expect(3, {"out 23 0"}, platform_usb_led_control(0, 1));
    for (const int beyond : {1, 18, -1}) expect(-1, {}, platform_usb_led_control(beyond, 1));
    expect(3, {"out 23 1", "out 24 1"}, platform_all_usb_led_control(0));
    expect(0, kPortsOn, platform_lan_led_control(2, 1));
    expect(0, kPortsOff, platform_all_lan_led_control(0));
    expect(0, kPortsOn, platform_all_wan_led_control(-1));
    platform_power_led_control(1);
    platform_wan_led_control(1, 1);
    platform_init_led_control(1);
    gpio_set_led();
    expect(0, {}, stop_runled() + start_runled() + set_usbled());
}

TEST_F(Leds, BothRadiosAndNoUsb) {
    expect(3, {"out 21 1", "out 22 1"}, platform_all_wl_led_control(0));
    host().hw.usb_count = 0;
    expect(0, {}, platform_all_usb_led_control(1));
    host().hw.run_led_gpio = -1;
    expect(-1, {}, platform_run_led_control(1));
}

TEST_F(Leds, AndTheWpsButtonBecomeGpios) {
    write_result = -1;
    expect(0, {"mode 18 1", "mode 63 1", "mode 21 1", "mode 22 1"}, init_gpio_after_insmod());
    std::strcpy(host().hw.wl_led[0].driven, "gpiO");
    host().hw.run_led_gpio = -1;
    expect(0, {"mode 63 1", "mode 22 1"}, init_gpio_after_insmod());
    host().hw.wps_button_gpio = host().hw.wl_led[1].gpio = -1;
    expect(0, {}, init_gpio_after_insmod());
    expect(0, {}, init_gpio());
}

TEST_F(Leds, TheRunLedBlinksUnlessToldOtherwiseAndWpsIsTheStateBeforeSilence) {
    host().led_silence.mode = 1;
    const auto expect_run_led = [](const std::string& operation, int state) {
        char text[32] = "###############################";
        EXPECT_EQ(0, get_run_led_op(text));
        EXPECT_EQ(operation, text);
        EXPECT_EQ(state, get_run_led_state());
    };
    expect_run_led("blink", 2);
    for (const std::string operation : {"wps", "wpsx", "more than thirty-one characters long"}) {
        EXPECT_EQ(0, set_run_led_op(operation.c_str()));
        expect_run_led(operation.substr(0, 31), operation == "wps" ? 1 : 2);
    }
    host().led_silence.mode = 0;
    EXPECT_EQ(0, get_run_led_state());
}

TEST_F(Leds, SilentHoursMayCrossMidnight) {
    // Mode, start, end, hours of silence from hour 0 on.
    const std::tuple<uint32_t, uint32_t, uint32_t, const char*> rows[] = {
        {2, 22, 6,  "111111----------------11"},
        {2, 6,  22, "------1111111111111111--"},
        {9, 5,  5,  "111111111111111111111111"},
        {2, 0,  1,  "1-----------------------"},
        {2, 23, 0,  "-----------------------1"},
        {1, 6,  7,  "111111111111111111111111"},
        {0, 0,  24, "------------------------"},
    };
    for (const auto& [mode, start, end, silent] : rows) {
        host().led_silence = {mode, start, end};
        std::string states;
        for (int hour = 0; hour < 24; ++hour) {
            now = 1'700'006'400 + hour * 3600 + hour * 150;  // from a midnight on
            states += get_run_led_state() == 2 ? '1' : '-';
        }
        EXPECT_EQ(silent, states) << mode << ' ' << start << ' ' << end;
    }
}

class Silence : public Leds {
protected:
    static Lines applied(const char* operation, const Lines& ports) {
        Lines lines = {"wireless_set_led ra0 -1", "wireless_set_led rai0 -1",
                       std::string("$2 led_ctl set run ") + operation, "$2 led_ctl update"};
        lines.insert(lines.end(), ports.begin(), ports.end());
        return lines;
    }
    const Lines on_ = applied("slow", kPortsOn);
    const Lines off_ = applied("off", kPortsOff);
};

TEST_F(Silence, IsAppliedWhenItChangesOrIsForced) {
    expect(0, on_, update_led_silent_control(1, 1));
    expect(0, {}, update_led_silent_control(0, 1));
    expect(0, off_, update_led_silent_control(0, 0));
    expect(0, {}, update_led_silent_control(0, 0));
    expect(0, off_, update_led_silent_control(1, 0));
    expect(0, on_, update_led_silent_control(0, 2));
    expect(0, on_, update_led_silent_control(0, 1));
    answer("led_ctl update", 1);
    expect(0, on_, update_led_silent_control(1, 1));
    write("/tmp/factory_default_mode", "");  // neither applied nor remembered
    expect(0, {}, update_led_silent_control(1, 0));
    remove("/tmp/factory_default_mode");
    expect(0, {}, update_led_silent_control(0, 1));
}

using SilenceDeathTest = Silence;
TEST_F(SilenceDeathTest, AProcessStartsWithTheLedsOn) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto first_call = [this] {
        update_led_silent_control(0, 1);
        _exit(journal().empty() ? 0 : 1);
    };
    EXPECT_EXIT(first_call(), testing::ExitedWithCode(0), "");
}

}  // namespace
