#include "run/report.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <sstream>

#include "live/journal.h"

namespace board::run {
namespace {

std::string padded(std::string text, size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

// A value as it fits on a line.
std::string shown(const std::string& value) {
    constexpr size_t kWidest = 60;
    if (value.size() <= kWidest) return quote(value);
    return quote(value.substr(0, kWidest)) + "... (" + std::to_string(value.size()) +
           " characters)";
}

std::vector<std::string> keys_of(const KeyFile& file) {
    std::vector<std::string> keys;
    std::set<std::string_view> seen;
    for (const std::string& line : file.lines())
        if (const auto pair = split_key_value(line); pair && seen.insert(pair->key).second)
            keys.emplace_back(pair->key);
    return keys;
}

size_t widest(const std::vector<std::string>& texts) {
    size_t width = 0;
    for (const std::string& text : texts) width = std::max(width, text.size());
    return width;
}

}  // namespace

void heading(const std::string& title) {
    const bool bold = ::isatty(STDOUT_FILENO) != 0;
    std::printf("\n%s%s%s\n", bold ? "\033[1m" : "", title.c_str(), bold ? "\033[0m" : "");
}

void section(const std::string& title, const std::vector<std::string>& lines) {
    std::printf("  %s%s\n", title.c_str(), lines.empty() ? ": none" : "");
    for (const std::string& line : lines) std::printf("    %s\n", line.c_str());
}

void table(const std::vector<std::vector<std::string>>& rows) {
    std::vector<size_t> widths(rows.front().size(), 0);
    for (const auto& row : rows)
        for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    for (const auto& row : rows) {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i) line += padded(row[i], widths[i] + 2);
        line.erase(line.find_last_not_of(' ') + 1);
        std::printf("  %s\n", line.c_str());
    }
}

std::vector<std::string> split_lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::vector<std::string> difference(const KeyFile& before, const KeyFile& after) {
    const auto keys = keys_of(after);
    const size_t width = widest(keys);
    std::vector<std::string> lines;
    for (const std::string& key : keys) {
        const auto old = before.get(key);
        const std::string now = after.get(key).value_or("");
        if (old == now) continue;
        const std::string values = old ? shown(*old) + " -> " + shown(now) : shown(now);
        lines.push_back((old ? "changed  " : "added    ") + padded(key, width) + " = " + values);
    }
    for (const std::string& key : keys_of(before))
        if (!after.get(key)) lines.push_back("removed  " + key);
    return lines;
}

}  // namespace board::run
