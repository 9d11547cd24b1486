// Reading of text lines: words as the journal writes them, and numbers.
#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace board {

// A "#" where a word would start ends the line. Nothing when a quote stays open.
std::optional<std::vector<std::string>> split_words(std::string_view line);

// The whole word as a number.
template <class Number>
std::optional<Number> to_number(std::string_view word, int base = 10) {
    Number value{};
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value, base);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

template <class Number>
std::optional<Number> number_within(std::string_view word, Number first, Number last,
                                    int base = 10) {
    const auto value = to_number<Number>(word, base);
    return value && *value >= first && *value <= last ? value : std::nullopt;
}

bool is_one_of(std::string_view word, std::initializer_list<std::string_view> words);

// "00:11:22:33:44:55"
std::optional<std::array<uint8_t, 6>> to_mac(std::string_view word);

}  // namespace board
