// Small tables: arrays or spans of rows, each known by one of its fields.
#pragma once

namespace platform {

// The first row with that value in the field; null when there is none.
template <class Rows, class Row, class Field, class Value>
constexpr const Row* find_row(const Rows& rows, Field Row::*field, const Value& value) {
    for (const Row& row : rows)
        if (row.*field == value) return &row;
    return nullptr;
}

// Whether no two rows have the same value in the field; asserted beside each table.
template <class Rows, class Row, class Field>
constexpr bool is_key(const Rows& rows, Field Row::*field) {
    for (const Row& row : rows)
        if (find_row(rows, field, row.*field) != &row) return false;
    return true;
}

}  // namespace platform
