// Words of a text, taken one after the other in place.
#pragma once

#include <optional>
#include <string_view>

namespace platform {

constexpr bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

// The words between runs of blanks, tabs and line feeds.
class Tokens {
public:
    constexpr explicit Tokens(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

    constexpr std::optional<std::string_view> next() {
        while (at_ != end_ && is_blank(*at_)) ++at_;
        if (at_ == end_) return {};
        const char* const start = at_;
        while (at_ != end_ && !is_blank(*at_)) ++at_;
        return std::string_view(start, static_cast<size_t>(at_ - start));
    }

private:
    const char* at_;
    const char* end_;
};

}  // namespace platform
