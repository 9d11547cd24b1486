// Numbers in the board's texts.
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
constexpr std::optional<uint64_t> leading_digits(std::string_view text) {
    uint64_t value = 0;
    for (const char c : text) {
        if (!is_digit(c)) break;
        if (__builtin_mul_overflow(value, uint64_t{10}, &value) ||
            __builtin_add_overflow(value, static_cast<uint64_t>(c - '0'), &value))
            return {};
    }
    return value;
}

// Takes the blanks and the sign before a number. Whether the sign is "-".
constexpr bool take_sign(std::string_view& text) {
    while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    return negative;
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
    while (digits < max_digits && digits < text.size() && hex_digit(text[digits]) >= 0)
        value = value << 4 | static_cast<uint32_t>(hex_digit(text[digits++]));
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
