#include "boardctl/call/words.h"

#include <charconv>
#include <optional>

#include "boardctl/errors.h"
#include "boardctl/text.h"

namespace boardctl::calls {
namespace {

[[noreturn]] void refuse(std::string_view what, std::string_view text, const std::string& wanted) {
    throw UsageError(std::string(what) + ": \"" + shown(text) + "\" is not " + wanted);
}

std::optional<uint64_t> magnitude(std::string_view digits) {
    const bool hexadecimal = digits.starts_with("0x") || digits.starts_with("0X");
    if (hexadecimal) digits.remove_prefix(2);
    uint64_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, hexadecimal ? 16 : 10);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

std::optional<char> byte_of(std::string_view pair) {
    uint8_t value = 0;
    const char* const end = pair.data() + pair.size();
    const auto [stop, error] = std::from_chars(pair.data(), end, value, 16);
    if (pair.size() != 2 || error != std::errc{} || stop != end) return std::nullopt;
    return static_cast<char>(value);
}

// The byte that an escape stands for, which is taken off the text.
std::optional<char> take_escape(std::string_view& rest) {
    if (rest.starts_with("\\\\")) {
        rest.remove_prefix(2);
        return '\\';
    }
    if (!rest.starts_with("\\x") || rest.size() < 4) return std::nullopt;
    const auto byte = byte_of(rest.substr(2, 2));
    rest.remove_prefix(4);
    return byte;
}

}  // namespace

uint64_t read_number(std::string_view text, Range range, std::string_view what) {
    const bool negative = text.starts_with('-');
    const auto value = magnitude(text.substr(negative ? 1 : 0));
    const uint64_t lowest = range.first < 0 ? uint64_t{0} - static_cast<uint64_t>(range.first) : 0;
    if (!value || *value > (negative ? lowest : range.last))
        refuse(
            what, text,
            "a number from " + std::to_string(range.first) + " to " + std::to_string(range.last));
    return negative ? uint64_t{0} - *value : *value;
}

std::string read_text(std::string_view text, std::string_view what) {
    std::string bytes;
    for (std::string_view rest = text; !rest.empty();) {
        if (rest[0] != '\\') {
            bytes += rest[0];
            rest.remove_prefix(1);
            continue;
        }
        const auto byte = take_escape(rest);
        if (!byte) refuse(what, text, "a text, in which a backslash reads \\\\ or begins \\xNN");
        bytes += *byte;
    }
    return bytes;
}

std::string read_hex(std::string_view text, std::string_view what) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); i += 2) {
        const auto byte = byte_of(text.substr(i, 2));
        if (!byte) refuse(what, text.substr(0, 64), "pairs of hexadecimal digits");
        bytes += *byte;
    }
    return bytes;
}

std::string read_mac(std::string_view text, std::string_view what) {
    constexpr size_t kDigits = 12;
    std::string digits(text);
    if (text.size() == kDigits + 5)
        for (size_t i = 2; i < digits.size(); i += 2)
            if (digits[i] == ':' || digits[i] == '-') digits.erase(i, 1);
    if (digits.size() != kDigits) refuse(what, text, "a MAC address");
    return read_hex(digits, what);
}

std::string hex(std::string_view bytes, std::string_view separator) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        if (!text.empty()) text += separator;
        const auto value = static_cast<unsigned char>(byte);
        text += {kDigits[value >> 4], kDigits[value & 15]};
    }
    return text;
}

}  // namespace boardctl::calls
