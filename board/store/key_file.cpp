#include "board/store/key_file.h"

#include <utility>

#include "board/store/store.h"

namespace board {
std::optional<KeyValue> split_key_value(std::string_view line) {
    const size_t equals = line.find('=');
    if (line.starts_with('#') || equals == std::string_view::npos) return std::nullopt;
    return KeyValue{line.substr(0, equals), line.substr(equals + 1)};
}

std::optional<KeyFile> KeyFile::load(std::string_view path) {
    auto text = read_text(path);
    if (!text) return std::nullopt;
    KeyFile file;
    file.text_ = std::move(*text);
    if (!file.text_.empty() && !file.text_.ends_with('\n')) file.text_ += '\n';
    return file;
}

KeyFile KeyFile::load_or_empty(std::string_view path) {
    return load(path).value_or(KeyFile());
}

bool KeyFile::save(std::string_view path) const {
    return replace_text(path, text_);
}

std::optional<KeyFile::Line> KeyFile::find(std::string_view key) const {
    if (key.starts_with('#') || key.find('=') != key.npos) return std::nullopt;
    const std::string_view text = text_;
    for (size_t start = 0; start < text.size();) {
        const size_t size = text.find('\n', start) + 1 - start;
        const std::string_view line = text.substr(start, size);
        if (line.starts_with(key) && line[key.size()] == '=') return Line{start, size};
        start += size;
    }
    return std::nullopt;
}

std::optional<std::string> KeyFile::get(std::string_view key) const {
    const auto line = find(key);
    if (!line) return std::nullopt;
    return text_.substr(line->start + key.size() + 1, line->size - key.size() - 2);
}

void KeyFile::set(std::string_view key, std::string_view value) {
    if (const auto line = find(key))
        text_.replace(line->start + key.size() + 1, line->size - key.size() - 2, value);
    else
        append(key, value);
}

void KeyFile::append(std::string_view key, std::string_view value) {
    ((text_ += key) += '=') += value;
    text_ += '\n';
}

bool KeyFile::remove(std::string_view key) {
    const size_t size = text_.size();
    while (const auto line = find(key)) text_.erase(line->start, line->size);
    return text_.size() != size;
}

std::vector<std::string> KeyFile::lines() const {
    return split_lines(text_);
}

}  // namespace board
