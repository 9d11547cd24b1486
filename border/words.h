// Arguments as words, and bytes as words again.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "border/record.h"
#include "border/row.h"

namespace border {

// A word that does not read as what was wanted. The message is before, the word in quotes when it
// says something, and after: words come from anywhere and may hold any byte.
struct BadArgument : std::runtime_error {
    BadArgument(std::string_view its_before, std::string_view its_after = "",
                std::optional<std::string_view> its_word = {})
        : runtime_error(std::string(its_before) + std::string(its_after)),
          before(its_before),
          word(its_word),
          after(its_after) {}

    std::string before;
    std::optional<std::string> word;
    std::string after;
};

// Decimal or, after 0x, hexadecimal digits, with "-" before a negative one.
uint64_t read_number(std::string_view text, Range range, std::string_view what);

// "\\" is a backslash, \xNN any byte.
std::string read_text(std::string_view text, std::string_view what);

// Pairs of hexadecimal digits, as many as there are; those of a MAC address have ":" or "-"
// between them or nothing.
std::string read_hex(std::string_view text, std::string_view what);
std::string read_mac(std::string_view text, std::string_view what);

std::string hex(std::string_view bytes, std::string_view separator = {});

// Sets a field from its text. Throws for a name that is no plain field's and for a value that does
// not fit.
void set_field(const Record& record, unsigned char* bytes, std::string_view name,
               std::string_view value);

}  // namespace border
