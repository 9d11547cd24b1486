// MAC addresses (IEEE 802: 48 bits).
#pragma once

#include <stdint.h>

#include "src/support/text.h"

namespace platform {

inline constexpr int kMacSize = 6;  // bytes

// Appends "XX:XX:XX:XX:XX:XX" and one character more, in one piece.
inline void put_mac(const uint8_t (&mac)[kMacSize], char end, Text& out) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    char text[3 * kMacSize];
    char* at = text;
    for (const uint8_t byte : mac) {
        *at++ = kDigits[byte >> 4];
        *at++ = kDigits[byte & 0xF];
        *at++ = ':';
    }
    at[-1] = end;
    out.put({text, sizeof text});
}

}  // namespace platform
