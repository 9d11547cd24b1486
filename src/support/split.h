// Pieces of a text, taken one after the other without copying.
#pragma once

#include <optional>
#include <string_view>

namespace platform {

// The pieces between single separators, empty ones included.
class Split {
public:
    constexpr Split(std::string_view text, char separator) : rest_(text), separator_(separator) {}

    [[gnu::always_inline]] constexpr std::optional<std::string_view> next() {
        if (ended_) return {};
        const size_t end = rest_.find(separator_);
        ended_ = end == std::string_view::npos;
        if (ended_) return rest_;
        const std::string_view piece(rest_.data(), end);
        rest_ = {rest_.data() + end + 1, rest_.size() - end - 1};
        return piece;
    }

    // The next piece that is not empty.
    constexpr std::optional<std::string_view> next_filled() {
        auto piece = next();
        while (piece && piece->empty()) piece = next();
        return piece;
    }

private:
    std::string_view rest_;
    char separator_;
    bool ended_ = false;
};

}  // namespace platform
