// Bounded text: views of record fields, copies, and an appender that never passes its buffer.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include <algorithm>
#include <span>
#include <string_view>

namespace platform {

// The text of a fixed-width field: up to its NUL, or the whole field when it has none.
template <size_t kSize>
std::string_view field_text(const char (&field)[kSize]) {
    return {field, strnlen(field, kSize)};
}

// A null text reads as the empty one.
inline std::string_view text_of(const char* text) {
    return text != nullptr ? text : "";
}

// Up to the first line feed.
constexpr std::string_view first_line(std::string_view text) {
    return {text.data(), std::min(text.find('\n'), text.size())};
}

constexpr bool has_prefix(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() &&
           __builtin_memcmp(text.data(), prefix.data(), prefix.size()) == 0;
}

constexpr char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Copies what fits and always terminates; the bytes after the terminator keep their value.
void copy_text(std::span<char> out, std::string_view text);

// Appends to a buffer, which is a terminated text at any time. What does not fit is left out
// whole, and so is all that follows; ok() then turns false.
class Text {
public:
    explicit Text(std::span<char> buffer);

    Text& put(std::string_view text);
    Text& put(char c) { return put(std::string_view(&c, 1)); }
    Text& put_decimal(int64_t value);
    Text& put_hex(uint32_t value, size_t min_digits);  // upper case
    Text& put_hex_lower(uint32_t value, size_t min_digits);

    [[nodiscard]] bool ok() const { return ok_; }
    size_t size() const { return used_; }
    std::string_view view() const { return {buffer_.data(), used_}; }
    const char* c_str() const { return buffer_.data(); }

private:
    Text& put_hex_digits(uint32_t value, size_t min_digits, const char* all);

    std::span<char> buffer_;
    size_t used_ = 0;
    bool ok_ = true;
};

// A text with its buffer.
template <size_t kSize>
class TextBuffer : public Text {
public:
    TextBuffer() : Text(storage_) { storage_[0] = '\0'; }
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

private:
    char storage_[kSize];
};

// A private, terminated copy of a text that the next lookup or a record may not keep for us.
template <size_t kSize>
class TextCopy {
public:
    explicit TextCopy(std::string_view text) { copy_text(text_, text); }
    explicit TextCopy(const char* text) : TextCopy(text_of(text)) {}
    const char* c_str() const { return text_; }
    std::string_view view() const { return text_; }

private:
    char text_[kSize];
};

}  // namespace platform
