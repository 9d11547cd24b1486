// Arguments as they are written on the command line. What does not read so is a UsageError, which
// names what was to be read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace boardctl::calls {

// What a number may be; it is handed on as a word, with its sign.
struct Range {
    int64_t first;
    uint64_t last;
};

// Decimal or, after 0x, hexadecimal digits, with "-" before a negative one.
uint64_t read_number(std::string_view text, Range range, std::string_view what);

// Text as shown() writes it: "\\" is a backslash, \xNN any byte.
std::string read_text(std::string_view text, std::string_view what);

// Pairs of hexadecimal digits, as many as there are; those of a MAC address have ":" or "-"
// between them or nothing.
std::string read_hex(std::string_view text, std::string_view what);
std::string read_mac(std::string_view text, std::string_view what);

std::string hex(std::string_view bytes, std::string_view separator = {});

}  // namespace boardctl::calls
