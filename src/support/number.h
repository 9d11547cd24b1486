// Numbers in the board's texts. Most have few digits: calls within would cost as much as those.
#pragma once

#include <stdint.h>

#include <optional>
#include <string_view>

namespace platform {

constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool is_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Leading decimal digits, 0 when there are none; nothing when they are more than 64 bits.
[[gnu::always_inline]] constexpr std::optional<uint64_t> leading_digits(std::string_view text) {
    constexpr uint64_t kNearly = UINT64_MAX / 10;
    const char* at = text.data();
    const char* const end = at + text.size();
    if (at == end) return 0;
    uint64_t value = 0;
    do {
        const uint64_t digit = uint64_t{static_cast<uint8_t>(*at)} - '0';
        if (digit > 9) break;
        if (value >= kNearly && (value > kNearly || digit > UINT64_MAX % 10)) return {};
        value = value * 10 + digit;
    } while (++at != end);
    return value;
}

// Takes the blanks and the sign before a number. Whether the sign is "-".
[[gnu::always_inline]] constexpr bool take_sign(std::string_view& text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end && is_space(*at)) ++at;
    const char sign = at != end ? *at : '\0';
    if (sign == '-' || sign == '+') ++at;
    text = {at, static_cast<size_t>(end - at)};
    return sign == '-';
}

// Leading digits behind any blanks and a sign. Of a larger number the low 32 bits, and of one
// beyond 64 bits those of the nearest 64-bit number, as the C library's scanf has it.
constexpr int32_t leading_decimal(std::string_view text) {
    const bool negative = take_sign(text);
    const uint64_t digits = leading_digits(text).value_or(UINT64_MAX);
    const uint64_t limit = uint64_t{INT64_MAX} + negative;
    const uint32_t magnitude = static_cast<uint32_t>(digits < limit ? digits : limit);
    return static_cast<int32_t>(negative ? 0 - magnitude : magnitude);
}

// The same in 64 bits, as the C library's strtoull has it: a negative number counts down from
// 2^64, and one that is too large, whatever its sign, is the largest value.
constexpr uint64_t leading_unsigned(std::string_view text) {
    const bool negative = take_sign(text);
    const auto digits = leading_digits(text);
    if (!digits) return UINT64_MAX;
    return negative ? 0 - *digits : *digits;
}

constexpr int hex_digit(char c) {
    if (is_digit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Up to max_digits leading hexadecimal digits; nothing when there are none.
constexpr std::optional<uint32_t> leading_hex(std::string_view text, size_t max_digits) {
    uint32_t value = 0;
    size_t digits = 0;
    for (; digits < max_digits && digits < text.size(); ++digits) {
        const int digit = hex_digit(text[digits]);
        if (digit < 0) break;
        value = value << 4 | static_cast<uint32_t>(digit);
    }
    if (digits == 0) return {};
    return value;
}

// A hexadecimal number with or without "0x", 0 when there is none; of a larger one the low 32 bits.
constexpr uint32_t hex_number(std::string_view text) {
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
        text.remove_prefix(2);
    return leading_hex(text, text.size()).value_or(0);
}

// Reads pairs of hexadecimal digits into the bytes, in order, for as long as the text lasts. A
// pair that begins with no digit leaves its byte alone.
template <size_t kSize>
constexpr void read_hex_pairs(std::string_view text, uint8_t (&bytes)[kSize]) {
    for (size_t i = 0; i < kSize && 2 * i < text.size(); ++i)
        if (const auto byte = leading_hex({text.data() + 2 * i, text.size() - 2 * i}, 2))
            bytes[i] = static_cast<uint8_t>(*byte);
}

}  // namespace platform
