#include "board/store/configuration.h"

#include <optional>

#include "board/store/key_file.h"
#include "board/store/store.h"
#include "board/store/words.h"

namespace board {
namespace {

std::optional<std::vector<std::string>> words_of(const std::string& line, LineForm form) {
    if (form == LineForm::words || line.empty() || line[0] == '#') return split_words(line);
    const auto pair = split_key_value(line);
    if (!pair) return std::nullopt;
    return std::vector{std::string(pair->key), std::string(pair->value)};
}

}  // namespace

Complaints read_configuration(std::string_view path, const TakeLine& take, LineForm form) {
    return read_configuration(in_tree(path), read_lines(path), take, form);
}

Complaints read_configuration(const std::string& name, const std::vector<std::string>& lines,
                              const TakeLine& take, LineForm form) {
    Complaints complaints;
    for (size_t i = 0; i < lines.size(); ++i) {
        const auto words = words_of(lines[i], form);
        if (words && words->empty()) continue;
        if (!words || !take(*words))
            complaints.push_back(name + ':' + std::to_string(i + 1) +
                                 ": not understood: " + lines[i]);
    }
    return complaints;
}

}  // namespace board
