#include "board/store/key_file.h"

#include <algorithm>

#include "board/store/store.h"

namespace board {
namespace {

auto key_is(std::string_view key) {
    return [key](std::string_view line) {
        const auto pair = split_key_value(line);
        return pair && pair->key == key;
    };
}

std::string joined(std::string_view key, std::string_view value) {
    return std::string(key) + '=' + std::string(value);
}

}  // namespace

std::optional<KeyValue> split_key_value(std::string_view line) {
    const size_t equals = line.find('=');
    if (line.starts_with('#') || equals == std::string_view::npos) return std::nullopt;
    return KeyValue{line.substr(0, equals), line.substr(equals + 1)};
}

std::optional<KeyFile> KeyFile::load(std::string_view path) {
    if (!read_text(path)) return std::nullopt;
    return load_or_empty(path);
}

KeyFile KeyFile::load_or_empty(std::string_view path) {
    KeyFile file;
    file.lines_ = read_lines(path);
    return file;
}

bool KeyFile::save(std::string_view path) const {
    return replace_lines(path, lines_);
}

std::optional<std::string> KeyFile::get(std::string_view key) const {
    const auto line = std::find_if(lines_.begin(), lines_.end(), key_is(key));
    if (line == lines_.end()) return std::nullopt;
    return line->substr(key.size() + 1);
}

void KeyFile::set(std::string_view key, std::string_view value) {
    const auto line = std::find_if(lines_.begin(), lines_.end(), key_is(key));
    if (line == lines_.end())
        append(key, value);
    else
        *line = joined(key, value);
}

void KeyFile::append(std::string_view key, std::string_view value) {
    lines_.push_back(joined(key, value));
}

bool KeyFile::remove(std::string_view key) {
    return std::erase_if(lines_, key_is(key)) != 0;
}

}  // namespace board
