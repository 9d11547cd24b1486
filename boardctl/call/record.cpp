#include "boardctl/call/record.h"

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>

#include "boardctl/call/words.h"
#include "boardctl/errors.h"
#include "boardctl/text.h"

namespace boardctl::calls {
namespace {

using nlohmann::ordered_json;

template <class Number>
Number number_at(const unsigned char* bytes) {
    Number value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

ordered_json value_at(const Field& field, const unsigned char* bytes) {
    const std::string_view content(reinterpret_cast<const char*>(bytes), field.width);
    switch (field.shape) {
        case Shape::i32:
            return number_at<int32_t>(bytes);
        case Shape::u32:
            return number_at<uint32_t>(bytes);
        case Shape::u64:
            return number_at<uint64_t>(bytes);
        case Shape::u8:
            return *bytes;
        case Shape::text:
            return shown(content.substr(0, content.find('\0')));
        case Shape::bytes:
            return hex(content);
        case Shape::mac:
            return hex(content, ":");
        case Shape::slot:
            return number_at<void*>(bytes) != nullptr;
        case Shape::record:
            return record_values(*field.record, bytes);
    }
    return nullptr;
}

// Only lists have arrays of records, and only they a count.
size_t elements(const Record& record, const Field& field, const unsigned char* bytes) {
    const bool counted =
        field.shape == Shape::record && std::strcmp(record.fields[0].name, "count") == 0;
    return counted ? std::min<size_t>(number_at<uint32_t>(bytes), field.count) : field.count;
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
            throw UsageError(std::string(field.name) + " takes no value");
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
        throw UsageError(std::string(field.name) + " holds " + std::to_string(field.width) +
                         " bytes");
    std::memset(bytes, 0, field.width);
    std::memcpy(bytes, content.data(), content.size());
}

}  // namespace

ordered_json record_values(const Record& record, const unsigned char* bytes) {
    ordered_json values = ordered_json::object();
    for (const Field& field : record.fields) {
        const unsigned char* const start = bytes + field.offset;
        if (field.count == 0) {
            values[field.name] = value_at(field, start);
            continue;
        }
        ordered_json& list = values[field.name] = ordered_json::array();
        for (size_t i = 0; i < elements(record, field, bytes); ++i)
            list.push_back(value_at(field, start + i * field.width));
    }
    return values;
}

void set_field(const Record& record, unsigned char* bytes, std::string_view name,
               std::string_view value) {
    for (const Field& field : record.fields)
        if (name == field.name && field.count == 0) return put(field, bytes + field.offset, value);
    throw UsageError(std::string(record.name) + " has no field \"" + shown(name) + '"');
}

}  // namespace boardctl::calls
