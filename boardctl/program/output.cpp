#include "boardctl/program/output.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>
#include <vector>

#include "boardctl/errors.h"
#include "boardctl/text.h"

namespace boardctl {
namespace {

using Json = nlohmann::ordered_json;
using Cells = std::vector<std::string>;

// Quotes make blanks at the ends, several in a row, and nothing at all visible.
std::string quoted_if_needed(const std::string& text) {
    const bool plain = !text.empty() && text.front() != ' ' && text.back() != ' ' &&
                       text.find("  ") == std::string::npos;
    return plain ? text : '"' + text + '"';
}

std::string cell(const Json& value) {
    if (value.is_null()) return "-";
    if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
    if (value.is_string()) return quoted_if_needed(value.get_ref<const std::string&>());
    if (!value.is_structured()) return value.dump();
    std::string line;
    for (const auto& [key, item] : value.items())
        line += (line.empty() ? "" : " ") + (value.is_object() ? key + '=' : "") + cell(item);
    return line.empty() ? "-" : line;
}

// An item that has a line of its own.
std::string line_of(const Json& item) {
    return item.is_string() ? item.get<std::string>() : cell(item);
}

std::string title_of(std::string key) {
    std::replace(key.begin(), key.end(), '_', ' ');
    return key;
}

std::string padded(const std::string& text, size_t width) {
    return text + std::string(width - std::min(width, columns(text)), ' ');
}

std::string aligned(const std::vector<Cells>& rows, const std::string& indent) {
    std::vector<size_t> widths;
    for (const Cells& row : rows) {
        widths.resize(std::max(widths.size(), row.size()), 0);
        for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], columns(row[i]));
    }
    std::string text;
    for (const Cells& row : rows) {
        std::string line = indent;
        for (size_t i = 0; i < row.size(); ++i) line += padded(row[i], widths[i] + 2);
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

bool is_list_of_objects(const Json& value) {
    return value.is_array() && !value.empty() &&
           std::all_of(value.begin(), value.end(), [](const Json& row) { return row.is_object(); });
}

bool is_long_list(const Json& value) {
    constexpr size_t kLineWidth = 90;
    if (!value.is_array() || value.empty()) return false;
    return columns(cell(value)) > kLineWidth ||
           std::any_of(value.begin(), value.end(), [](const Json& item) {
               return item.is_string() &&
                      item.get_ref<const std::string&>().find(' ') != std::string::npos;
           });
}

// Needs lines of its own.
bool is_block(const Json& value) {
    return is_list_of_objects(value) || is_long_list(value) ||
           (value.is_object() && !value.empty());
}

class Text {
public:
    explicit Text(bool bold) : bold_(bold) {}

    std::string of(const Json& value) {
        add(value, "");
        return text_;
    }

private:
    void add(const Json& value, const std::string& indent) {
        if (is_list_of_objects(value))
            add_table(value, indent);
        else if (value.is_array())
            for (const Json& item : value) text_ += indent + line_of(item) + '\n';
        else if (value.is_object())
            add_object(value, indent);
        else
            text_ += indent + cell(value) + '\n';
    }

    void add_object(const Json& object, const std::string& indent) {
        std::vector<Cells> fields;
        for (const auto& [key, value] : object.items()) {
            if (!is_block(value)) {
                fields.push_back({title_of(key), cell(value)});
                continue;
            }
            text_ += aligned(fields, indent);
            fields.clear();
            add_heading(key, indent, object.size() == 1);
            add(value, object.size() == 1 ? indent : indent + "  ");
        }
        text_ += aligned(fields, indent);
    }

    void add_heading(const std::string& key, const std::string& indent, bool is_only_one) {
        if (is_only_one) return;
        if (indent.empty() && !text_.empty()) text_ += '\n';
        const bool marked = bold_ && indent.empty();
        text_ += fmt::format("{}{}{}{}\n", indent, marked ? "\033[1m" : "", title_of(key),
                             marked ? "\033[0m" : "");
    }

    static bool has_blocks(const Json& rows) {
        return std::any_of(rows.begin(), rows.end(), [](const Json& row) {
            return std::any_of(row.begin(), row.end(), is_block);
        });
    }

    // Rows that hold lists of their own are shown one after another.
    void add_table(const Json& rows, const std::string& indent) {
        if (has_blocks(rows)) {
            for (const Json& row : rows) {
                if (!text_.empty()) text_ += '\n';
                add(row, indent);
            }
            return;
        }
        Cells keys;
        for (const Json& row : rows)
            for (const auto& [key, value] : row.items())
                if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
        std::vector<Cells> lines(1);
        for (const std::string& key : keys) lines[0].push_back(title_of(key));
        for (const Json& row : rows) {
            Cells& line = lines.emplace_back();
            for (const std::string& key : keys)
                line.push_back(row.contains(key) ? cell(row[key]) : "-");
        }
        text_ += aligned(lines, indent);
    }

    std::string text_;
    const bool bold_;
};

}  // namespace

Json escaped(const Json& value) {
    if (value.is_string()) return shown(value.get_ref<const std::string&>());
    if (!value.is_structured()) return value;
    Json copy = value.is_array() ? Json::array() : Json::object();
    for (const auto& [key, item] : value.items()) {
        if (value.is_array())
            copy.push_back(escaped(item));
        else
            copy[shown(key)] = escaped(item);
    }
    return copy;
}

std::string as_json(const Json& value) {
    return value.dump(2) + '\n';
}

std::string as_text(const Json& value, bool bold) {
    const bool is_empty = value.is_structured() && value.empty();
    return is_empty ? "none\n" : Text(bold).of(value);
}

void print_out(const std::string& text) {
    const bool is_written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (std::fflush(stdout) != 0 || !is_written)
        throw Failed(std::string("cannot write the answer: ") + std::strerror(errno));
}

}  // namespace boardctl
