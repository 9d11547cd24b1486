// Reading of text lines: words as the journal writes them, and numbers.
#pragma once

#include <charconv>
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

}  // namespace board
