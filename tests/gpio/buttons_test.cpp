// The pin file and the buttons on it.
#include <unistd.h>

#include <cstdio>

#include "frame/host.h"
#include "gpio/pin_file.h"
#include "live/journal.h"
#include "platform/gpio.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr const char* kPins = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
const std::string kHeader = "pin file\nPIN: MODE DIR DOUT DIN\n";

// The board's buttons are on pins 62 and 63; 1 is released.
class Buttons : public harness::Board {
protected:
    void set(int reset, int wps) {
        write(kPins, kHeader + "62:1 0 0 " + std::to_string(reset) + " 0 0 0 0 0\n63:1 0 0 " +
                         std::to_string(wps) + " 0 0 0 0 0\n");
    }
    // Holds the reset button for a number of samples.
    void hold(int samples) {
        left_ = samples;
        set(samples > 0 ? 0 : 1, 1);
        held_board = this;
    }
    static int release(useconds_t pause) {
        board::journal({"usleep", std::to_string(pause)});
        if (--held_board->left_ == 0) held_board->set(1, 1);
        return 0;
    }

private:
    inline static Buttons* held_board = nullptr;
    int left_ = 0;
};

TEST(PinLine, HoldsTenNumbers) {
    constexpr platform::PinState kBefore = {
        {-7, -7, -7, -7, -9}
    };
    const std::pair<const char*, int> kRows[] = {
        {"62:1 2 3 4 5 6 7 8 9\n",              4 },
        {"62: 1 2 3 0 5 6 7 8 9 (GPIO) rest\n", 0 },
        {" 62:-1 2 3 -4 5 6 7 8 9",             -4},
        {"62:1\t2  3 1 5 6 7 8 +9\r\n",         1 },
    };
    for (const auto& [line, level] : kRows) {
        platform::PinState state = kBefore;
        EXPECT_TRUE(platform::parse_pin_line(line, state)) << line;
        EXPECT_EQ(level, state.input_level()) << line;
        EXPECT_EQ(62, state.pin()) << line;
    }
    for (const char* line :
         {"62:1 2 3 4 5 6 7 8\n", "62:1 2 3 x 5 6 7 8 9\n", "62 1 2 3 4 5 6 7 8 9 10\n",
          "x:1 2 3 4 5 6 7 8 9\n", ":1 2 3 4 5 6 7 8 9\n", ""}) {
        platform::PinState state = kBefore;
        EXPECT_FALSE(platform::parse_pin_line(line, state)) << line;
        EXPECT_EQ(-9, state.input_level()) << line;
        EXPECT_EQ(-7, state.pin()) << line;
    }
}

TEST_F(Buttons, ArePressedWhileTheLevelIsLow) {
    for (const int reset : {0, 1})
        for (const int wps : {0, 1}) {
            set(reset, wps);
            EXPECT_EQ(1 - reset, pushed_reset_button());
            EXPECT_EQ(1 - reset, platform_get_rst_button_pressed());
            EXPECT_EQ(1 - wps, pushed_wps_button());
            EXPECT_EQ(1 - wps, platform_get_wps_button_pressed());
        }
}

TEST_F(Buttons, TheFirstWholeLineOfThePinCounts) {
    const std::string pressed = "62:1 0 0 0 0 0 0 0 0\n";
    const std::string released = "62:1 0 0 1 0 0 0 0 0\n";
    const std::string other = "6:1 0 0 0 0 0 0 0 0\n162:1 0 0 0 0 0 0 0 0\n";
    for (const std::string& lines :
         {pressed + released, "62:1 0 0\n\nnoise\n" + pressed,
          "6:1 0 0 0 0 0 0 0 0 " + std::string(600, '.') + "\n" + pressed,
          pressed.substr(0, pressed.size() - 1)}) {
        write(kPins, kHeader + lines);
        EXPECT_EQ(1, pushed_reset_button()) << lines;
    }
    for (const std::string& lines :
         {released + pressed, other + released, other,
          "6:1 " + std::string(254, '.') + pressed + released, std::string()}) {
        write(kPins, kHeader + lines);
        EXPECT_EQ(0, pushed_reset_button()) << lines;
    }
    write(kPins, pressed + pressed);
    EXPECT_EQ(0, pushed_reset_button());
    remove(kPins);
    EXPECT_EQ(0, pushed_reset_button());
    EXPECT_EQ(0, check_default_button(0, 0));
}

TEST_F(Buttons, HoldsAreSampledWithPausesBetween) {
    // Interval, count, samples held, result, pauses.
    const std::tuple<int, int, int, int, size_t> kRows[] = {
        {100,  30, 100, 1, 29},
        {100,  30, 4,   0, 4 },
        {1000, 2,  2,   1, 1 },
        {0,    5,  9,   1, 0 },
        {-1,   2,  9,   1, 0 },
        {100,  0,  9,   1, 0 },
        {100,  -3, 9,   1, 0 },
        {100,  1,  0,   0, 0 },
    };
    const harness::LibraryHook hook("usleep", release);
    for (const auto& [interval, count, held, result, pauses] : kRows) {
        SCOPED_TRACE(testing::Message() << interval << ' ' << count << ' ' << held);
        clear_journal();
        hold(held);
        EXPECT_EQ(result, check_default_button(interval, count));
        EXPECT_EQ(Lines(pauses, "usleep " + std::to_string(interval * 1000)), journal());
        std::string messages;
        for (int i = 1; i < count && i <= held; ++i)
            messages += "Reset Pushed " + std::to_string(i) + '\n';
        EXPECT_EQ(messages, out());
    }
}

TEST_F(Buttons, TheWpsButtonNamesItself) {
    set(1, 0);
    EXPECT_EQ(1, check_wps_button(7, 3));
    EXPECT_EQ("WPS Pushed 1\nWPS Pushed 2\n", out());
    EXPECT_EQ((Lines{"usleep 7000", "usleep 7000"}), journal());
    set(0, 1);
    EXPECT_EQ(0, check_wps_button(7, 3));
}

// The library keeps its pins for the life of a process, so this has one of its own.
using PinCacheDeathTest = Buttons;
TEST_F(PinCacheDeathTest, APinIsAskedForOnceAndAMissingOneAgain) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    static int asked;
    asked = 0;
    int (*const count)(const char*, void*) = [](const char* name, void* block) {
        ++asked;
        return get_si(name, block);
    };
    const harness::LibraryHook hook("get_si", count);
    // A pin, and what the library then says of its button after how many questions.
    const auto look = [](int32_t& pin, int number, int (*pushed)()) {
        pin = number;
        const int result = pushed();
        std::fprintf(stderr, "%d after %d, ", result, asked);
    };
    const auto steps = [&] {
        set(0, 0);
        for (const int pin : {-1, -1, 62, 99})
            look(host().hw.reset_button_gpio, pin, pushed_reset_button);
        look(host().hw.wps_button_gpio, -1, pushed_wps_button);
        look(host().hw.wps_button_gpio, -1, [] { return check_wps_button(1, 1); });
        look(host().hw.wps_button_gpio, 63, pushed_wps_button);
        look(host().hw.wps_button_gpio, 63, platform_get_wps_button_pressed);
        _exit(0);
    };
    EXPECT_EXIT(steps(), testing::ExitedWithCode(0),
                "^0 after 1, 0 after 2, 1 after 3, 1 after 3, "
                "0 after 4, 0 after 5, 1 after 6, 1 after 6, $");
}

}  // namespace
