#include "board/store/configuration.h"

#include <fstream>
#include <optional>

#include "board/store/key_file.h"
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

Complaints read_configuration(const std::string& file, const TakeLine& take, LineForm form) {
    Complaints complaints;
    std::ifstream lines(file);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        const auto words = words_of(line, form);
        if (words && words->empty()) continue;
        if (!words || !take(*words))
            complaints.push_back(file + ':' + std::to_string(number) + ": not understood: " + line);
    }
    return complaints;
}

}  // namespace board
