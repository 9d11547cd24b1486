// Records that cross the border, field by field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace border {

enum class Shape : uint8_t { i32, u32, u64, u8, text, bytes, mac, slot, record };

struct Record;

struct Field {
    const char* name;
    size_t offset;
    Shape shape;
    size_t width;                    // of one element
    size_t count = 0;                // 0: no array
    const Record* record = nullptr;  // of Shape::record
    bool secret = false;
};

struct Record {
    const char* name;
    size_t size;
    std::span<const Field> fields;  // without those that are the host's own
};

}  // namespace border
