// The pin file, the buttons on it, the pins' functions.
#include <cstring>

#include "platform/gpio.h"
#include "src/gpio/pin_file.h"
#include "src/host/host.h"
#include "tests/support/board.h"
#include "tests/support/rows.h"

namespace {

using harness::kPinPath;
using harness::Lines;

class Pins : public harness::Board {
protected:
    Pins() { write(kPinPath, ""); }
    void list(const std::string& lines) { write(kPinPath, "pin file\nPIN: MODE DIR\n" + lines); }
};

// The board's buttons are on pins 62 and 63; 1 is released.
class Buttons : public Pins {
protected:
    void set(int reset, int wps) {
        list("62:1 0 0 " + std::to_string(reset) + " 0 0 0 0 0\n63:1 0 0 " + std::to_string(wps) +
             " 0 0 0 0 0\n");
    }
    // Holds the reset button for a number of samples.
    void hold(int samples) {
        left_ = samples;
        set(samples > 0 ? 0 : 1, 1);
        on_pause = [this] {
            if (--left_ == 0) set(1, 1);
        };
    }

private:
    int left_ = 0;
};

TEST(PinLine, HoldsTenNumbers) {
    platform::PinState state = {
        {-7, -7, -7, -7, -9}
    };
    for (const char* line :
         {"62:1 2 3 4 5 6 7 8\n", "62:1 2 3 x 5 6 7 8 9\n", "62 1 2 3 4 5 6 7 8 9 10\n",
          "x:1 2 3 4 5 6 7 8 9\n", ":1 2 3 4 5 6 7 8 9\n", ""}) {
        EXPECT_FALSE(platform::parse_pin_line(line, state)) << line;
        EXPECT_EQ(-9, state.input_level()) << line;
        EXPECT_EQ(-7, state.pin()) << line;
    }
    for (const char* line :
         {"62:1 2 3 4 5 6 7 8 9\n", "62: 1 2 3 +4 5 6 7 8 9 (GPIO) rest\n",
          "62:1\t2  3 4 5 6 7 8 +9\r\n", " 62:-1 2 3 -4 5 6 7 8 9", "62:1 2 3 4 5 6 7 8 9x"}) {
        EXPECT_TRUE(platform::parse_pin_line(line, state)) << line;
        EXPECT_EQ(*line == ' ' ? -4 : 4, state.input_level()) << line;
        EXPECT_EQ(62, state.pin()) << line;
    }
}

TEST_F(Buttons, ArePressedWhileTheLevelIsLow) {
    for (const int reset : {0, 1, 2, -1, 256})
        for (const int wps : {0, 1}) {
            set(reset, wps);
            EXPECT_EQ(reset == 0, pushed_reset_button());
            EXPECT_EQ(reset == 0, platform_get_rst_button_pressed());
            EXPECT_EQ(1 - wps, pushed_wps_button());
            EXPECT_EQ(1 - wps, platform_get_wps_button_pressed());
        }
}

TEST_F(Buttons, TheFirstWholeLineOfThePinCounts) {
    const std::string pressed = "62:1 0 0 0 0 0 0 0 0\n";
    const std::string released = "62:1 0 0 1 0 0 0 0 0\n";
    const std::string other =
        "6:1 0 0 0 0 0 0 0 0\n162:1 0 0 0 0 0 0 0 0\n"
        "190:1 0 0 0 0 0 0 0 0\n-62:1 0 0 0 0 0 0 0 0\n";
    const std::string longer = "6:1 " + std::string(251, '.');  // as much as is read at once
    for (const std::string& lines : {released + pressed, other + released, other,
                                     longer + pressed + released, std::string()}) {
        list(lines);
        EXPECT_EQ(0, pushed_reset_button()) << lines;
    }
    for (const std::string& lines :
         {pressed + released, "62:1 0 0\n\nnoise\n" + pressed, longer + longer + "\n" + pressed,
          pressed.substr(0, pressed.size() - 1)}) {
        list(lines);
        EXPECT_EQ(1, pushed_reset_button()) << lines;
        fail_nth("fgets", 3);  // a pressed button is not remembered
        EXPECT_EQ(0, pushed_reset_button()) << lines;
    }
    write(kPinPath, pressed + pressed);
    EXPECT_EQ(0, pushed_reset_button());
    remove(kPinPath);
    EXPECT_EQ(0, pushed_reset_button());
    EXPECT_EQ(0, check_default_button(0, 0));
}

TEST_F(Buttons, HoldsAreSampledWithPausesBetween) {
    // Milliseconds between, samples wanted and held; the result, the samples told of.
    for (const auto& [interval, count, held, result, told] : harness::rows<int, int, int, int, int>(
             "100 30 100 1 29  100 30 4 0 4  1000 2 2 1 1  0 5 9 1 4  -1 2 9 1 1 "
             "100 1 9 1 0  100 0 9 1 0  100 -3 9 1 0  100 1 0 0 0")) {
        SCOPED_TRACE(testing::Message() << interval << ' ' << count << ' ' << held);
        clear_journal();
        hold(held);
        EXPECT_EQ(result, check_default_button(interval, count));
        Lines expected;
        for (int i = 1; i <= told; ++i) {
            if (interval > 0) expected.push_back("usleep " + std::to_string(interval * 1000));
            expected.push_back("out Reset Pushed " + std::to_string(i));
        }
        EXPECT_EQ(expected, journal());
    }
}

TEST_F(Buttons, TheWpsButtonNamesItselfAfterEachPause) {
    set(0, 1);
    EXPECT_EQ(0, check_wps_button(7, 3));
    set(1, 0);
    EXPECT_EQ(1, check_wps_button(7, 3));
    EXPECT_EQ((Lines{"usleep 7000", "out WPS Pushed 1", "usleep 7000", "out WPS Pushed 2"}),
              journal());
}

// The library keeps its pins for the life of a process, so this has one of its own. Pin 0 is one.
using PinCacheDeathTest = Buttons;
TEST_F(PinCacheDeathTest, APinIsAskedForOnceAndAMissingOneAgain) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    static std::string asked;
    int (*const note)(const char*, void*) = [](const char* name, void* block) {
        asked += '?';
        return get_si(name, block);
    };
    const harness::LibraryHook hook(HOST_HOOK(get_si, note));
    list("0:1 0 0 0 0 0 0 0 0\n63:1 0 0 0 0 0 0 0 0\n");
    const auto steps = [] {
        for (const int pin : {-1, -2, 0, 99}) {
            host().hw.reset_button_gpio = pin;
            asked += std::to_string(pushed_reset_button());
        }
        for (const int pin : {-1, 63}) {
            host().hw.wps_button_gpio = pin;
            asked += std::to_string(pushed_wps_button()) + std::to_string(check_wps_button(1, 1));
        }
        std::fprintf(stderr, "%s\n", asked.c_str());
        _exit(0);
    };
    EXPECT_EXIT(steps(), testing::ExitedWithCode(0), "^[?]0[?]0[?]11[?][?]00[?]11\n$");
}

TEST_F(Pins, OfLedsAndTheWpsButtonBecomeGpios) {
    static Lines written;
    int (*const record)(const char*, const char*) = [](const char* path, const char* text) {
        written.push_back(path == std::string(kPinPath) ? text : path);
        return -1;
    };
    const harness::LibraryHook hook(HOST_HOOK(write_file, record));
    const struct {
        int run, wps;
        hw_wl_led first, second;
        Lines expected;
    } kRows[] = {
        {18, 63, {21, "gpio"}, {22, "gpio"},  {"mode 18 1", "mode 63 1", "mode 21 1", "mode 22 1"}},
        {0,  0,  {0, "gpio"},  {0, "gpio"},   {"mode 0 1", "mode 0 1", "mode 0 1", "mode 0 1"}    },
        {-1, 63, {21, "gpiO"}, {22, "gpio"},  {"mode 63 1", "mode 22 1"}                          },
        {18, -1, {21, "gpio"}, {22, "gpio2"}, {"mode 18 1", "mode 21 1"}                          },
        {-1, -1, {-1, "gpio"}, {22, "gpi"},   {}                                                  },
    };
    for (const auto& [run, wps, first, second, expected] : kRows) {
        host().hw.run_led_gpio = run;
        host().hw.wps_button_gpio = wps;
        host().hw.wl_led[0] = first;
        host().hw.wl_led[1] = second;
        written.clear();
        EXPECT_EQ(0, init_gpio_after_insmod());
        EXPECT_EQ(expected, written);
    }
    EXPECT_EQ(0, init_gpio());
    EXPECT_EQ(Lines{}, written);
}

}  // namespace
