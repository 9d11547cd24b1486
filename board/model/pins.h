// The kernel's pin-controller file: two lines of head, then a line for each pin. A command that is
// written to it changes a pin's line.
#pragma once

#include <string_view>
#include <vector>

#include "board/store/configuration.h"

namespace board {

inline constexpr const char* kPinFile = "/sys/devices/platform/10005000.pinctrl/mt_gpio";

// What /etc/pins.conf says, "PIN LEVEL what is wired to it" a line.
struct WiredPin {
    int number = 0;
    int level = 0;
};
Complaints load_wired_pins(std::vector<WiredPin>& pins);

void make_pin_file();  // with the wired pins

bool has_pins();  // false: no such file, or one that lists nothing

// "mode PIN FUNCTION" or "out PIN LEVEL"; false for any other command and a pin that is not there.
bool write_pin_command(std::string_view command);

bool set_pin_output(int pin, int level);

// The level that is seen on a pin, as by a button that is pressed (0) or released (1).
bool set_pin_input(int pin, int level);

// What a pin's line says; -1 when there is none.
enum class PinColumn { function, is_output, output, input };
int pin_value(int pin, PinColumn column);

}  // namespace board
