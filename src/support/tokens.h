// Words of a text, taken one after the other in place.
#pragma once

#include <stdint.h>

#include <optional>
#include <string_view>

namespace platform {

// Most characters are above the blank: one comparison tells.
constexpr bool is_blank(char c) {
    return static_cast<uint8_t>(c) <= ' ' && (c == ' ' || c == '\t' || c == '\n');
}

// The words between runs of blanks, tabs and line feeds.
class Tokens {
public:
    constexpr explicit Tokens(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

    // The optional costs nothing where it is looked at.
    [[gnu::always_inline]] constexpr std::optional<std::string_view> next() {
        const std::string_view word = take_word();
        if (word.empty()) return {};
        return word;
    }

private:
    // Empty at the end of the text.
    constexpr std::string_view take_word() {
        const char* start = at_;
        while (start != end_ && is_blank(*start)) ++start;
        const char* end = start;
        if (end != end_) {
            do {
                ++end;
            } while (end != end_ && !is_blank(*end));
        }
        at_ = end;
        return {start, static_cast<size_t>(end - start)};
    }

    const char* at_;
    const char* end_;
};

}  // namespace platform
