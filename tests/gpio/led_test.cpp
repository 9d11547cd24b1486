// LEDs: every entry point, the silent hours, the switch between normal and silent.
#include <unistd.h>

#include <cstring>
#include <sstream>

#include "platform/flash.h"
#include "platform/gpio.h"
#include "src/host/host.h"
#include "tests/support/board.h"

namespace {

using harness::kPinPath;
using harness::Lines;

const Lines kPortsOn = {"$2 switch reg w 7c10 11111111", "$2 switch reg w 7c14 11110110",
                        "$2 switch reg w 7c18 00000111"};
const Lines kPortsOff = {"$2 switch reg w 7c10 11011111", "$2 switch reg w 7c14 10110000",
                         "$2 switch reg w 7c18 00000110"};

class Leds : public harness::Board {
protected:
    Leds() {
        written.clear();
        int (*const record)(const char*, const char*) = [](const char* path, const char* text) {
            written.push_back(path == std::string(kPinPath) ? text : path);
            return 3;
        };
        hook_ = std::make_unique<harness::LibraryHook>(HOST_HOOK(write_file, record));
    }

    inline static Lines written;  // to the pin file, whose result is 3

private:
    std::unique_ptr<harness::LibraryHook> hook_;
};

// Run LED 0, Wi-Fi LEDs 0 and none, USB LEDs 23, none and 0; the radios' list is 1, 7, 0.
TEST_F(Leds, AreDrivenByTheirPins) {
    host().hw.run_led_gpio = host().hw.wl_led[0].gpio = 0;
    host().hw.wl_led[1].gpio = -1;
    std::strcpy(host().hw.wl_led[0].driven, "driver");
    host().hw.usb_count = 3;
    host().hw.usb_led_gpio[2] = 0;
    host().wl_modes = {1, 7, 0};
    for (const int result : {turn_led(7, 1), turn_led(7, -256), turn_led(7, 0),
                             platform_run_led_control(1), platform_wl_led_control(2, 0),
                             platform_usb_led_control(0, 1), platform_all_usb_led_control(0)})
        EXPECT_EQ(3, result);
    EXPECT_EQ(7, platform_wl_led_control(1, 1));  // of another mode
    EXPECT_EQ(-1, platform_all_wl_led_control(1));
    EXPECT_EQ((Lines{"out 7 0", "out 7 0", "out 7 1", "out 0 0", "out 0 1", "out 23 0", "out 23 1",
                     "out 0 1", "out 0 0"}),
              written);
    written.clear();
    for (const int radio : {0, 3, -1}) EXPECT_EQ(-1, platform_wl_led_control(radio, 1));
    for (const int port : {1, 18, -1}) EXPECT_EQ(-1, platform_usb_led_control(port, 1));
    EXPECT_EQ(Lines{}, written);
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Leds, OfThePortsAreTheSwitchs) {
    EXPECT_EQ(0, platform_lan_led_control(2, 1));
    EXPECT_EQ(0, platform_all_lan_led_control(0));
    EXPECT_EQ(0, platform_all_wan_led_control(-1));
    Lines expected;
    for (const Lines& part : {kPortsOn, kPortsOff, kPortsOn})
        expected.insert(expected.end(), part.begin(), part.end());
    EXPECT_EQ(expected, journal());
}

TEST_F(Leds, OfBothRadiosTheSecondOneAnswers) {
    EXPECT_EQ(3, platform_all_wl_led_control(0));
    host().hw.wl_led[0].gpio = -1;
    EXPECT_EQ(3, platform_all_wl_led_control(0));
    EXPECT_EQ((Lines{"out 21 1", "out 22 1", "out 22 1"}), written);
    host().hw.run_led_gpio = -1;
    EXPECT_EQ(-1, platform_run_led_control(1));
    EXPECT_EQ(3u, written.size());
}

// The number of LEDs is the host's; there is room for 18. One port is lit whatever the number.
TEST_F(Leds, OfUsbAreAsManyAsThereAreAndRoomFor) {
    host().hw.usb_led_gpio[17] = 5;
    host().hw.lan_port_count = 77;  // behind the pins
    const struct {
        int count;
        Lines expected;
    } kRows[] = {
        {-1,  {}                     },
        {0,   {}                     },
        {1,   {"out 23 0"}           },
        {18,  {"out 23 0", "out 5 0"}},
        {100, {"out 23 0", "out 5 0"}},
    };
    for (const auto& [count, expected] : kRows) {
        host().hw.usb_count = count;
        written.clear();
        EXPECT_EQ(count, platform_all_usb_led_control(1));
        EXPECT_EQ(expected, written) << count;
        EXPECT_EQ(3, platform_usb_led_control(17, 1));
    }
}

TEST_F(Leds, TheRunLedBlinksUnlessToldOtherwise) {
    char operation[32];
    std::memset(operation, '#', sizeof operation);
    EXPECT_EQ(0, get_run_led_op(operation));
    EXPECT_STREQ("blink", operation);
    EXPECT_EQ(0, set_run_led_op("a text of more than thirty-one characters"));
    EXPECT_EQ(0, get_run_led_op(operation));
    EXPECT_STREQ("a text of more than thirty-one ", operation);
}

TEST_F(Leds, WpsIsTheStateBeforeSilence) {
    host().led_silence.mode = 1;
    for (const std::string operation : {"", "wps", "wpsx"}) {
        EXPECT_EQ(0, set_run_led_op(operation.c_str()));
        EXPECT_EQ(operation == "wps" ? 1 : 2, get_run_led_state()) << operation;
    }
    host().led_silence.mode = 0;
    EXPECT_EQ(0, get_run_led_state());
}

TEST_F(Leds, SilentHoursMayCrossMidnight) {
    // Mode, start, end, hours of silence from hour 0 on.
    for (const char* row : {"2 22 6 111111----------------11", "2 6 22 ------1111111111111111--",
                            "9 5 5 111111111111111111111111", "2 0 1 1-----------------------",
                            "2147483649 23 0 -----------------------1",
                            "1 6 7 111111111111111111111111", "0 0 24 ------------------------"}) {
        uint32_t mode, start, end;
        std::string silent, states;
        std::istringstream(row) >> mode >> start >> end >> silent;
        host().led_silence = {mode, start, end};
        for (int hour = 0; hour < 24; ++hour) {
            now = 1'700'006'400 + hour * 3600 + hour * 150;  // from a midnight on
            states += get_run_led_state() == 2 ? '1' : '-';
        }
        EXPECT_EQ(silent, states) << row;
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
    void expect_update(int force, int on, const Lines& lines) {
        clear_journal();
        EXPECT_EQ(0, update_led_silent_control(force, on));
        EXPECT_EQ(lines, journal());
    }
};

TEST_F(Silence, IsAppliedWhenItChangesOrIsForced) {
    const Lines on = applied("slow", kPortsOn);
    const Lines off = applied("off", kPortsOff);
    expect_update(1, 1, on);
    expect_update(0, 1, {});
    expect_update(0, 0, off);
    expect_update(0, 0, {});
    expect_update(1, 0, off);
    expect_update(0, 256, on);
    expect_update(0, 256, {});
    expect_update(0, 1, on);
    expect_update(0, 1, {});
    answer("led_ctl update", 1);
    expect_update(-2, 1, on);
}

TEST_F(Silence, DoesNotReachTheFactoryTestMode) {
    expect_update(1, 1, applied("slow", kPortsOn));
    write("/tmp/factory_default_mode", "");
    expect_update(1, 0, {});
    remove("/tmp/factory_default_mode");
    expect_update(0, 1, {});
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
