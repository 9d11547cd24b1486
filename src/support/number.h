// Numbers in the board's texts.
#pragma once

#include <stdint.h>

#include <string_view>

namespace platform {

constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Leading digits as a number, 0 when there are none; larger numbers stay at INT32_MAX.
constexpr int32_t leading_digits(std::string_view text) {
    int64_t value = 0;
    for (const char c : text) {
        if (!is_digit(c)) break;
        value = value * 10 + (c - '0');
        if (value > INT32_MAX) return INT32_MAX;
    }
    return static_cast<int32_t>(value);
}

}  // namespace platform
