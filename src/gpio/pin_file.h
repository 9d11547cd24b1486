// The kernel's pin-controller file.
#pragma once

#include <stdint.h>

#include <string_view>

namespace platform {

// A pin's line: its number and nine integers, of which the library reads the input level.
struct PinState {
    int32_t numbers[10];

    int32_t pin() const { return numbers[0]; }
    int32_t input_level() const { return numbers[4]; }
};

inline constexpr int32_t kNoPin = -1;  // of a part that the board does not have

// Reads "pin: n n n n n n n n n ..."; false, with the state untouched, for any other line.
bool parse_pin_line(std::string_view line, PinState& state);

// Writes "<word> <pin> <value>". The host's write_file() result.
int gpio_write_cmd(const char* word, int pin, int value);

// The first line of the pin: 1, 0 when there is none, -1 when the file cannot be read.
int gpio_read_pin(int pin, PinState& state);

}  // namespace platform
