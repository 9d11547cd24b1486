// Texts and MAC addresses.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>

#include "src/host/host.h"

namespace {

bool is_hex(char c) {
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

char upper(char c) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

int nibble(char c) {
    return c <= '9' ? c - '0' : upper(c) - 'A' + 10;
}

std::string hex_digits(const char* text) {
    std::string digits;
    for (; *text != '\0'; ++text)
        if (is_hex(*text)) digits += upper(*text);
    return digits;
}

constexpr size_t kMacBytes = 6;
constexpr size_t kMacDigits = 2 * kMacBytes;
constexpr size_t kMacText = 3 * kMacBytes - 1;  // "00:11:22:33:44:55"

// The address stands at the start of the text; only blanks and a line end may follow.
bool is_mac_text(const char* text) {
    for (size_t i = 0; i < kMacText; ++i)
        if (i % 3 == 2 ? text[i] != ':' : !is_hex(text[i])) return false;
    return std::strspn(text + kMacText, " \t\r\n") == std::strlen(text + kMacText);
}

}  // namespace

extern "C" {

char* sf_strncpy(char* destination, const char* source, size_t size) {
    if (size == 0) return destination;
    const size_t length = source == nullptr ? 0 : strnlen(source, size - 1);
    if (length != 0) std::memmove(destination, source, length);
    destination[length] = '\0';
    return destination;
}

void trim_crcf(char* text) {
    size_t length = std::strlen(text);
    while (length > 0 && (text[length - 1] == '\r' || text[length - 1] == '\n')) --length;
    text[length] = '\0';
}

void strtoupper(char* text) {
    std::transform(text, text + std::strlen(text), text, upper);
}

int strtomac(const char* text, uint8_t* mac) {
    std::fill_n(mac, kMacBytes, uint8_t{0});
    if (text == nullptr || !is_mac_text(text)) return -1;
    for (size_t i = 0; i < kMacBytes; ++i)
        mac[i] = static_cast<uint8_t>(nibble(text[3 * i]) << 4 | nibble(text[3 * i + 1]));
    return 0;
}

int mactostr(const uint8_t* mac, char* text, int size) {
    std::snprintf(text, static_cast<size_t>(size), "%02X:%02X:%02X:%02X:%02X:%02X", mac[0], mac[1],
                  mac[2], mac[3], mac[4], mac[5]);
    return 0;
}

int maccmp(const char* a, const char* b) {
    if (a == nullptr || b == nullptr) return -1;
    const std::string left = hex_digits(a);
    return left.size() == kMacDigits && left == hex_digits(b) ? 0 : 1;
}

}  // extern "C"
