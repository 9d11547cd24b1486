// Records that exported functions take and fill, field by field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string_view>

namespace boardctl::calls {

enum class Shape : uint8_t { i32, u32, u64, u8, text, bytes, mac, slot, record };

struct Record;

struct Field {
    const char* name;
    size_t offset;
    Shape shape;
    size_t width;                    // of one element
    size_t count = 0;                // 0: no array
    const Record* record = nullptr;  // of Shape::record
};

struct Record {
    const char* name;
    size_t size;
    std::span<const Field> fields;  // without those that are the host's own
};

// Its fields by name, in their order. A list shows as many entries as its field "count" says.
nlohmann::ordered_json record_values(const Record& record, const unsigned char* bytes);

// Sets a field from its text. Throws UsageError for a name that is no plain field's and for a value
// that does not fit.
void set_field(const Record& record, unsigned char* bytes, std::string_view name,
               std::string_view value);

}  // namespace boardctl::calls
