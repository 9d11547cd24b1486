#include "border/words.h"

#include <charconv>
#include <cstring>

namespace border {
namespace {

[[noreturn]] void refuse(std::string_view what, std::string_view text, const std::string& wanted) {
    throw BadArgument(std::string(what) + ": ", " is not " + wanted, text);
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

Range range_of(Shape shape) {
    switch (shape) {
        case Shape::i32:
            return {INT32_MIN, INT32_MAX};
        case Shape::u32:
            return {0, UINT32_MAX};
        case Shape::u8:
            return {0, UINT8_MAX};
        default:
            return {INT64_MIN, UINT64_MAX};
    }
}

std::string value_bytes(const Field& field, std::string_view value) {
    switch (field.shape) {
        case Shape::text:
            return read_text(value, field.name);
        case Shape::bytes:
            return read_hex(value, field.name);
        case Shape::mac:
            return read_mac(value, field.name);
        case Shape::slot:
        case Shape::record:
            throw BadArgument(std::string(field.name) + " takes no value");
        default:
            break;
    }
    const uint64_t number = read_number(value, range_of(field.shape), field.name);
    return {reinterpret_cast<const char*>(&number), field.width};
}

void put(const Field& field, unsigned char* bytes, std::string_view value) {
    const std::string content = value_bytes(field, value);
    const bool fits =
        field.shape == Shape::text ? content.size() <= field.width : content.size() == field.width;
    if (!fits)
        throw BadArgument(std::string(field.name) + " holds " + std::to_string(field.width) +
                          " bytes");
    std::memset(bytes, 0, field.width);
    std::memcpy(bytes, content.data(), content.size());
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

void set_field(const Record& record, unsigned char* bytes, std::string_view name,
               std::string_view value) {
    for (const Field& field : record.fields)
        if (name == field.name && field.count == 0) return put(field, bytes + field.offset, value);
    throw BadArgument(std::string(record.name) + " has no field ", "", name);
}

}  // namespace border
