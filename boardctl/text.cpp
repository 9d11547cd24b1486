#include "boardctl/text.h"

#include <algorithm>
#include <cstdint>

namespace boardctl {
namespace {

// First and last of ranges. Valid characters that are not shown: C1 controls, those without an
// image of their own, marks of writing direction, surrogates, tags and what is no character.
constexpr uint32_t kHidden[] = {0x0080, 0x009f, 0x00ad, 0x00ad,  0x061c,  0x061c, 0x180e,
                                0x180e, 0x200b, 0x200f, 0x2028,  0x202e,  0x2060, 0x206f,
                                0xd800, 0xdfff, 0xfdd0, 0xfdef,  0xfeff,  0xfeff, 0xfff0,
                                0xfffb, 0xfffe, 0xffff, 0xe0000, 0x10ffff};

constexpr uint32_t kWide[] = {0x1100, 0x115f, 0x2e80, 0xa4cf,  0xac00,  0xd7a3,  0xf900,
                              0xfaff, 0xff00, 0xff60, 0x1f300, 0x1faff, 0x20000, 0x3fffd};
constexpr uint32_t kCombining[] = {0x0300, 0x036f, 0x20d0, 0x20ff, 0xfe00, 0xfe0f, 0xfe20, 0xfe2f};

template <size_t kCount>
bool is_in(const uint32_t (&ranges)[kCount], uint32_t character) {
    bool found = false;
    for (size_t i = 0; i < kCount; i += 2)
        found |= character >= ranges[i] && character <= ranges[i + 1];
    return found;
}

struct Character {
    uint32_t code = 0;
    size_t length = 0;  // 0: no valid UTF-8
};

Character decode(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80) return {byte(0), 1};
    const size_t length = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    if (byte(0) < 0xc2 || byte(0) > 0xf4 || text.size() < length) return {};
    uint32_t code = byte(0) & (0x7fU >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0) != 0x80) return {};
        code = code << 6 | (byte(i) & 0x3fU);
    }
    constexpr uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code < kSmallest[length] || code > 0x10ffff ? Character{} : Character{code, length};
}

bool is_shown(const Character& character) {
    if (character.length == 0 || character.code < 0x20 || character.code == 0x7f) return false;
    return !is_in(kHidden, character.code);
}

void add_escape(std::string& text, char byte) {
    constexpr char kDigits[] = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    text += {'\\', 'x', kDigits[value >> 4], kDigits[value & 15]};
}

}  // namespace

std::string shown(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const Character character = decode(bytes);
        const size_t length = std::max<size_t>(character.length, 1);
        if (bytes[0] == '\\')
            text += "\\\\";
        else if (is_shown(character))
            text += bytes.substr(0, length);
        else
            for (size_t i = 0; i < length; ++i) add_escape(text, bytes[i]);
        bytes.remove_prefix(length);
    }
    return text;
}

size_t columns(std::string_view text) {
    size_t count = 0;
    while (!text.empty()) {
        const Character character = decode(text);
        if (!is_in(kCombining, character.code)) count += is_in(kWide, character.code) ? 2 : 1;
        text.remove_prefix(std::max<size_t>(character.length, 1));
    }
    return count;
}

}  // namespace boardctl
