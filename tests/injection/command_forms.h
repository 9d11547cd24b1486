// The forms of the library's commands: the literals of its sources and the rows of the document
// that tells where each of their arguments comes from.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

namespace injection {

inline std::string content_of(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

inline size_t count(const std::string& text, const std::string& part) {
    size_t found = 0;
    for (size_t at = 0; (at = text.find(part, at)) != text.npos; at += part.size()) ++found;
    return found;
}

// Every literal that makes a command, each once. A place that makes one in a way that is not
// understood here is an error.
inline std::vector<std::string> forms_in_sources(const std::filesystem::path& sources) {
    const std::string literal = R"re("((?:[^"\\]|\\.)*)")re";
    const std::regex command("Command<[^>]*>(?: \\w+)?\\(\\s*" + literal);
    const std::regex in_table("\\{\"[^\"]*\",\\s*" + literal);
    // A table of formats, and templates over whole commands.
    const std::regex other(R"re(Command<64>\(row\.command,|const Command<kSize>& command)re");
    std::vector<std::string> forms;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources)) {
        if (!entry.is_regular_file() || entry.path().parent_path().filename() == "support")
            continue;
        const std::string text = content_of(entry.path());
        const auto take = [&](const std::regex& pattern) {
            const std::sregex_iterator first(text.begin(), text.end(), pattern);
            for (auto match = first; match != std::sregex_iterator(); ++match)
                forms.push_back(replaced((*match)[1], "\\\"", "\""));
            return static_cast<size_t>(std::distance(first, std::sregex_iterator()));
        };
        size_t understood = take(command);
        understood += static_cast<size_t>(std::distance(
            std::sregex_iterator(text.begin(), text.end(), other), std::sregex_iterator()));
        if (understood != count(text, "Command<"))
            throw std::runtime_error(entry.path().string() + ": an unknown kind of command");
        if (text.find("CommandFormat<") != text.npos && take(in_table) == 0)
            throw std::runtime_error(entry.path().string() + ": no formats in the table");
    }
    std::ranges::sort(forms);
    forms.erase(std::unique(forms.begin(), forms.end()), forms.end());
    return forms;
}

inline size_t argument_count(const std::string& form) {
    return count(form, "%");
}

// Form and number of arguments of each row "| `form` | what; why<br>what; why |".
inline std::map<std::string, size_t> forms_in_document(const std::filesystem::path& document) {
    std::map<std::string, size_t> forms;
    std::ifstream file(document);
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("| `")) continue;
        const size_t end = std::min(line.find("` | "), line.size());
        const std::string form = replaced(line.substr(3, end - 3), "\\|", "|");
        if (!forms.emplace(form, count(line.substr(end), "; ")).second)
            throw std::runtime_error("twice in the document: " + form);
    }
    return forms;
}

// How much of a form is the same in all of its commands.
inline size_t own_text(const std::string& form) {
    return std::regex_replace(form, std::regex("%(s|d|02x)"), "").size();
}

// What commands of a form look like when their texts hold no blank.
inline std::regex pattern_of(const std::string& form) {
    std::string pattern = std::regex_replace(form, std::regex(R"([.|*+?()\[\]{}^$\\])"), "\\$&");
    pattern = replaced(replaced(pattern, "%s", "\\S*"), "%d", "-?\\d+");
    return std::regex(replaced(pattern, "%02x", "[0-9a-f]{2}"));
}

}  // namespace injection
