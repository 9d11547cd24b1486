#include "call/record.h"

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>

#include "call/words.h"
#include "errors.h"
#include "text.h"

namespace boardctl {
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

std::string value_bytes(const Field& field, std::string_view value, std::string_view path) {
    switch (field.shape) {
        case Shape::text:
            return read_text(value, path);
        case Shape::bytes:
            return read_hex(value, path);
        case Shape::mac:
            return read_mac(value, path);
        case Shape::slot:
        case Shape::record:
            throw UsageError(std::string(path) + " takes no value");
        default:
            break;
    }
    const uint64_t number = read_number(value, range_of(field.shape), path);
    return {reinterpret_cast<const char*>(&number), field.width};
}

void put(const Field& field, unsigned char* bytes, std::string_view value, std::string_view path) {
    const std::string content = value_bytes(field, value, path);
    const bool fits =
        field.shape == Shape::text ? content.size() <= field.width : content.size() == field.width;
    if (!fits)
        throw UsageError(std::string(path) + " holds " + std::to_string(field.width) + " bytes");
    std::memset(bytes, 0, field.width);
    std::memcpy(bytes, content.data(), content.size());
}

// The element that "[N]" at the head of the rest names; without an array there is only one.
std::optional<size_t> take_element(const Field& field, std::string_view& rest) {
    if (field.count == 0) return 0;
    const size_t end = rest.find(']');
    if (!rest.starts_with('[') || end == rest.npos) return std::nullopt;
    const auto element = read_number(rest.substr(1, end - 1), {0, field.count - 1}, field.name);
    rest.remove_prefix(end + 1);
    return element;
}

struct Place {
    const Field* field;
    size_t offset;
};

std::optional<Place> find_place(const Record& record, std::string_view path) {
    for (const Field& field : record.fields) {
        if (!path.starts_with(field.name)) continue;
        std::string_view rest = path.substr(std::strlen(field.name));
        const auto element = take_element(field, rest);
        if (!element) continue;
        const size_t offset = field.offset + *element * field.width;
        if (rest.empty()) return Place{&field, offset};
        if (field.record == nullptr || !rest.starts_with('.')) continue;
        const auto inner = find_place(*field.record, rest.substr(1));
        if (inner) return Place{inner->field, offset + inner->offset};
    }
    return std::nullopt;
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

void set_field(const Record& record, unsigned char* bytes, std::string_view path,
               std::string_view value) {
    const auto place = find_place(record, path);
    if (!place) throw UsageError(std::string(record.name) + " has no field \"" + shown(path) + '"');
    put(*place->field, bytes + place->offset, value, path);
}

}  // namespace boardctl
