#include "src/support/text.h"

#include <charconv>

namespace platform {

void copy_text(std::span<char> out, std::string_view text) {
    if (out.empty()) return;
    const size_t length = std::min(text.size(), out.size() - 1);
    if (length != 0) memcpy(out.data(), text.data(), length);
    out[length] = '\0';
}

Text::Text(std::span<char> buffer) : buffer_(buffer) {
    buffer_[0] = '\0';
}

Text& Text::put(std::string_view text) {
    ok_ = ok_ && text.size() < buffer_.size() - used_;
    if (!ok_ || text.empty()) return *this;
    memcpy(buffer_.data() + used_, text.data(), text.size());
    used_ += text.size();
    buffer_[used_] = '\0';
    return *this;
}

Text& Text::put_decimal(int64_t value) {
    char digits[20];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value);
    return put(std::string_view(digits, static_cast<size_t>(end - digits)));
}

Text& Text::put_hex(uint32_t value, size_t min_digits) {
    return put_hex_digits(value, min_digits, "0123456789ABCDEF");
}

Text& Text::put_hex_lower(uint32_t value, size_t min_digits) {
    return put_hex_digits(value, min_digits, "0123456789abcdef");
}

Text& Text::put_hex_digits(uint32_t value, size_t min_digits, const char* all) {
    char digits[8];
    size_t first = sizeof digits;
    while (first > 0 && (value != 0 || sizeof digits - first < min_digits)) {
        digits[--first] = all[value & 0xF];
        value >>= 4;
    }
    return put(std::string_view(digits + first, sizeof digits - first));
}

}  // namespace platform
