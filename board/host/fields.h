// The fields of the state by name, for everything that reads or writes a state as text.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "board/host/state.h"

namespace board {

// A number inside a block or record of the host, which may lie at any address.
struct RecordNumber {
    char* at;

    int32_t get() const {
        int32_t value;
        std::memcpy(&value, at, sizeof value);
        return value;
    }
    void set(int32_t value) const { std::memcpy(at, &value, sizeof value); }
};

// Where a field lies. Values are numbers, texts of fixed or any size, lists, and bytes as
// hexadecimal digits.
using FieldPlace = std::variant<int32_t*, uint32_t*, RecordNumber, std::string*,
                                std::vector<int32_t>*, std::span<char>, std::span<uint8_t>>;

struct Field {
    std::string name;  // "set easymesh", "radio 0 bss 1 ssid"
    FieldPlace place;
};

// All fields, always in the same order; they point into the state.
std::vector<Field> fields_of(State& target);

std::vector<std::string> field_value(const Field& field);  // as words
bool set_field(const Field& field, std::span<const std::string> words);

}  // namespace board
