#include "boardctl/call/values.h"

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>

#include "boardctl/text.h"
#include "border/words.h"

namespace boardctl {

using namespace border;

namespace {

using nlohmann::ordered_json;

template <class Number>
Number at(const unsigned char* bytes) {
    Number value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

ordered_json value_at(const Field& field, const unsigned char* bytes) {
    const std::string_view content(reinterpret_cast<const char*>(bytes), field.width);
    switch (field.shape) {
        case Shape::i32:
            return at<int32_t>(bytes);
        case Shape::u32:
            return at<uint32_t>(bytes);
        case Shape::u64:
            return at<uint64_t>(bytes);
        case Shape::u8:
            return *bytes;
        case Shape::text:
            return shown(content.substr(0, content.find('\0')));
        case Shape::bytes:
            return hex(content);
        case Shape::mac:
            return hex(content, ":");
        case Shape::slot:
            return at<void*>(bytes) != nullptr;
        case Shape::record:
            return record_values(*field.record, bytes);
    }
    return nullptr;
}

// Only lists have arrays of records, and only they a count.
size_t elements(const Record& record, const Field& field, const unsigned char* bytes) {
    const bool counted =
        field.shape == Shape::record && std::strcmp(record.fields[0].name, "count") == 0;
    return counted ? std::min<size_t>(at<uint32_t>(bytes), field.count) : field.count;
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

namespace {

ordered_json wired_stations(std::string_view bytes) {
    wired_station_list list;
    std::memcpy(&list, bytes.data(), sizeof list);
    ordered_json stations = ordered_json::array();
    for (const wired_station* node = list.first; node != nullptr; node = node->next)
        stations.push_back(
            record_values(*record_of<wired_station>, reinterpret_cast<const unsigned char*>(node)));
    return stations;
}

ordered_json value(const Parameter& parameter, std::string_view content) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(content.data());
    switch (parameter.kind) {
        case Kind::filled_number:
            return border::number_at(content);
        case Kind::filled_mac:
            return hex(content, ":");
        case Kind::filled_bytes:
            return hex(content);
        case Kind::filled_list:
            return wired_stations(content);
        case Kind::changed_record:
        case Kind::filled_record:
            break;
        default:
            return shown(content);
    }
    if (parameter.room == 1) return record_values(*parameter.record, bytes);
    ordered_json records = ordered_json::array();
    for (size_t at = 0; at < content.size(); at += unit_size(parameter))
        records.push_back(record_values(*parameter.record, bytes + at));
    return records;
}

}  // namespace

ordered_json frame_values(const Function& function, const Frame& frame, uintptr_t result) {
    ordered_json values = ordered_json::object();
    for (size_t i = 0; i < function.count; ++i) {
        const Parameter& parameter = function.parameters[i];
        if (!is_answer(parameter)) continue;
        values[parameter.name] =
            frame.is_null(i) ? nullptr : value(parameter, frame.used(i, result));
    }
    return values;
}

}  // namespace boardctl
