// A text file of KEY=VALUE lines. The order of lines, comments and unknown lines are kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace board {

class KeyFile {
public:
    // Nothing when the file cannot be read.
    static std::optional<KeyFile> load(std::string_view path);
    static KeyFile load_or_empty(std::string_view path);
    bool save(std::string_view path) const;

    std::optional<std::string> get(std::string_view key) const;
    void set(std::string_view key, std::string_view value);
    void append(std::string_view key, std::string_view value);  // beside lines of the same key
    bool remove(std::string_view key);

    std::vector<std::string> lines() const;

private:
    struct Line {
        size_t start;
        size_t size;  // its line feed counts
    };
    std::optional<Line> find(std::string_view key) const;

    std::string text_;  // ends with a line feed, unless it is empty
};

// The two sides of a line's first "="; nothing for a comment or a line without "=".
struct KeyValue {
    std::string_view key;
    std::string_view value;
};
std::optional<KeyValue> split_key_value(std::string_view line);

}  // namespace board
