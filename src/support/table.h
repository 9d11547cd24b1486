// Small tables: arrays of rows, each known by one of its fields.
#pragma once

#include <stddef.h>

namespace platform {

// The first row with that value in the field; null when there is none.
template <class Row, size_t kRows, class Field, class Value>
constexpr const Row* find_row(const Row (&rows)[kRows], Field Row::*field, const Value& value) {
    for (const Row& row : rows)
        if (row.*field == value) return &row;
    return nullptr;
}

// Whether no two rows have the same value in the field; asserted beside each table.
template <class Row, size_t kRows, class Field>
constexpr bool is_key(const Row (&rows)[kRows], Field Row::*field) {
    for (const Row& row : rows)
        if (find_row(rows, field, row.*field) != &row) return false;
    return true;
}

}  // namespace platform
