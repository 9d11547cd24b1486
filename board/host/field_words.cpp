// How the value of each kind of field is written as words and read from them.
#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

#include "board/host/fields.h"
#include "board/store/words.h"

namespace board {
namespace {

struct AsWords {
    using Words = std::vector<std::string>;

    Words operator()(const int32_t* value) const { return {std::to_string(*value)}; }
    Words operator()(RecordNumber field) const { return {std::to_string(field.get())}; }
    Words operator()(const uint32_t* value) const { return {std::to_string(*value)}; }
    Words operator()(const std::string* value) const { return {*value}; }
    Words operator()(std::span<char> text) const {
        return {std::string(text.data(), strnlen(text.data(), text.size()))};
    }
    Words operator()(const std::vector<int32_t>* list) const {
        Words words;
        for (const int32_t value : *list) words.push_back(std::to_string(value));
        return words;
    }
    Words operator()(std::span<uint8_t> bytes) const {
        std::string digits;
        for (const uint8_t byte : bytes) {
            char pair[3];
            std::snprintf(pair, sizeof pair, "%02x", byte);
            digits += pair;
        }
        return {digits};
    }
};

struct FromWords {
    std::span<const std::string> words;

    template <class Number>
    std::optional<Number> only_number() const {
        return words.size() == 1 ? to_number<Number>(words[0]) : std::nullopt;
    }

    bool operator()(int32_t* place) const {
        const auto value = only_number<int32_t>();
        if (value) *place = *value;
        return value.has_value();
    }
    bool operator()(uint32_t* place) const {
        const auto value = only_number<uint32_t>();
        if (value) *place = *value;
        return value.has_value();
    }
    bool operator()(RecordNumber place) const {
        const auto value = only_number<int32_t>();
        if (value) place.set(*value);
        return value.has_value();
    }
    bool operator()(std::string* place) const {
        if (words.size() != 1) return false;
        *place = words[0];
        return true;
    }
    // A text may fill its field whole, without room for a terminator.
    bool operator()(std::span<char> place) const {
        if (words.size() != 1 || words[0].size() > place.size()) return false;
        std::fill(place.begin(), place.end(), '\0');
        std::copy(words[0].begin(), words[0].end(), place.begin());
        return true;
    }
    bool operator()(std::vector<int32_t>* place) const {
        std::vector<int32_t> list;
        for (const std::string& word : words) {
            const auto value = to_number<int32_t>(word);
            if (!value) return false;
            list.push_back(*value);
        }
        *place = std::move(list);
        return true;
    }
    bool operator()(std::span<uint8_t> place) const {
        if (words.size() != 1 || words[0].size() != 2 * place.size()) return false;
        std::vector<uint8_t> bytes;
        for (size_t i = 0; i < words[0].size(); i += 2) {
            const auto value = to_number<uint8_t>(words[0].substr(i, 2), 16);
            if (!value) return false;
            bytes.push_back(*value);
        }
        std::copy(bytes.begin(), bytes.end(), place.begin());
        return true;
    }
};

}  // namespace

std::vector<std::string> field_value(const Field& field) {
    return std::visit(AsWords{}, field.place);
}

bool set_field(const Field& field, std::span<const std::string> words) {
    return std::visit(FromWords{words}, field.place);
}

}  // namespace board
