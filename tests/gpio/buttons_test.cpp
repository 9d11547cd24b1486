// The pin file, the buttons on it, the pins' functions.
#include <unistd.h>

#include <cstring>

#include "frame/host.h"
#include "gpio/pin_file.h"
#include "live/journal.h"
#include "platform/gpio.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr const char* kPins = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
const std::string kHeader = "pin file\nPIN: MODE DIR DOUT DIN\n";

class Pins : public harness::Board {
protected:
    Pins() { write(kPins, ""); }
    void list(const std::string& lines) { write(kPins, kHeader + lines); }
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
        held_board = this;
        int (*const release)(useconds_t) = [](useconds_t pause) {
            board::journal({"usleep", std::to_string(pause)});
            if (--held_board->left_ == 0) held_board->set(1, 1);
            return 0;
        };
        pause_hook_.reset();
        pause_hook_ = std::make_unique<harness::LibraryHook>("usleep", release);
    }

private:
    inline static Buttons* held_board = nullptr;
    int left_ = 0;
    std::unique_ptr<harness::LibraryHook> pause_hook_;
};

TEST(PinLine, HoldsTenNumbers) {
    using platform::PinState;
    for (const auto& [line, level] : {
             std::pair("62:1 2 3 4 5 6 7 8 9\n", 4),
             {"62: 1 2 3 0 5 6 7 8 9 (GPIO) rest\n", 0 },
             {" 62:-1 2 3 -4 5 6 7 8 9",             -4},
             {"62:1\t2  3 1 5 6 7 8 +9\r\n",         1 },
             {"62:1 2 3 4 5 6 7 8\n",                -9},
             {"62:1 2 3 x 5 6 7 8 9\n",              -9},
             {"62 1 2 3 4 5 6 7 8 9 10\n",           -9},
             {"x:1 2 3 4 5 6 7 8 9\n",               -9},
             {":1 2 3 4 5 6 7 8 9\n",                -9},
             {"",                                    -9}
    }) {
        PinState state = {
            {-7, -7, -7, -7, -9}
        };
        EXPECT_EQ(level != -9, platform::parse_pin_line(line, state)) << line;
        EXPECT_EQ(level, state.input_level()) << line;
        EXPECT_EQ(level != -9 ? 62 : -7, state.pin()) << line;
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
    for (const auto& [lines, pushed] : {
             std::pair(pressed + released, 1),
             {released + pressed,                       0                    },
             {other + released,                         0                    },
             {other,                                    0                    },
             {"62:1 0 0\n\nnoise\n" + pressed,          1                    },
             {"6:1 0 0 0 0 0 0 0 0 " + std::string(600, '.') + "\n" + pressed, 1},
             {"6:1 " + std::string(254,                                        '.') + pressed + released,                                      0},
             {pressed.substr(0,                                       pressed.size() - 1),                       1},
             {std::string(),0}
    }) {
        list(lines);
        EXPECT_EQ(pushed, pushed_reset_button()) << lines;
    }
    write(kPins, pressed + pressed);
    EXPECT_EQ(0, pushed_reset_button());
    remove(kPins);
    EXPECT_EQ(0, pushed_reset_button());
    EXPECT_EQ(0, check_default_button(0, 0));
}

TEST_F(Buttons, HoldsAreSampledWithPausesBetween) {
    struct Row {
        int interval, count, held, result, pauses;
        const char* pause;
    };
    const Row rows[] = {
        {100,  30, 100, 1, 29, "usleep 100000" },
        {100,  30, 4,   0, 4,  "usleep 100000" },
        {1000, 2,  2,   1, 1,  "usleep 1000000"},
        {0,    5,  9,   1, 0,  ""              },
        {-1,   2,  9,   1, 0,  ""              },
        {100,  1,  9,   1, 0,  ""              },
        {100,  0,  9,   1, 0,  ""              },
        {100,  -3, 9,   1, 0,  ""              },
        {100,  1,  0,   0, 0,  ""              },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.interval << ' ' << row.count << ' ' << row.held);
        clear_journal();
        hold(row.held);
        EXPECT_EQ(row.result, check_default_button(row.interval, row.count));
        EXPECT_EQ(Lines(static_cast<size_t>(row.pauses), row.pause), journal());
        std::string messages;
        for (int i = 1; i < row.count && i <= row.held; ++i)
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

// The library keeps its pins for the life of a process, so these have one of their own each.
class PinCacheDeathTest : public Buttons {
protected:
    template <class Steps>
    void expect_in_a_new_process(Steps steps) {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        int (*const count)(const char*, void*) = [](const char* name, void* block) {
            ++asked;
            return get_si(name, block);
        };
        const harness::LibraryHook hook("get_si", count);
        EXPECT_EXIT((steps(), _exit(0)), testing::ExitedWithCode(0), "");
    }
    // A step of the new process.
    static void check(int expected_asked, int expected, int result) {
        if (asked == expected_asked && result == expected) return;
        std::fprintf(stderr, "asked %d times, result %d\n", asked, result);
        _exit(1);
    }
    inline static int asked = 0;
};

TEST_F(PinCacheDeathTest, APinIsAskedForOnceAndAMissingOneAgain) {
    set(0, 0);
    expect_in_a_new_process([] {
        host().hw.reset_button_gpio = -1;
        check(1, 0, pushed_reset_button());
        check(2, 0, pushed_reset_button());
        host().hw.reset_button_gpio = 62;
        check(3, 1, pushed_reset_button());
        host().hw.reset_button_gpio = 99;
        check(3, 1, pushed_reset_button());
        host().hw.wps_button_gpio = -1;
        check(4, 0, pushed_wps_button());
        check(5, 0, check_wps_button(1, 1));
        host().hw.wps_button_gpio = 63;
        check(6, 1, pushed_wps_button());
        check(6, 1, platform_get_wps_button_pressed());
    });
}

TEST_F(Pins, OfLedsAndTheWpsButtonBecomeGpios) {
    Lines written;
    static Lines* lines;
    lines = &written;
    int (*const record)(const char*, const char*) = [](const char* path, const char* text) {
        lines->push_back(path == std::string(kPins) ? text : path);
        return -1;
    };
    const harness::LibraryHook hook("write_file", record);
    EXPECT_EQ(0, init_gpio_after_insmod());
    EXPECT_EQ((Lines{"mode 18 1", "mode 63 1", "mode 21 1", "mode 22 1"}), written);
    written.clear();
    std::strcpy(host().hw.wl_led[0].driven, "gpiO");
    host().hw.run_led_gpio = -1;
    EXPECT_EQ(0, init_gpio_after_insmod());
    EXPECT_EQ((Lines{"mode 63 1", "mode 22 1"}), written);
    written.clear();
    host().hw.wps_button_gpio = host().hw.wl_led[1].gpio = -1;
    EXPECT_EQ(0, init_gpio_after_insmod());
    EXPECT_EQ(0, init_gpio());
    EXPECT_EQ(Lines{}, written);
}

}  // namespace
