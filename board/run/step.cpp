#include "run/step.h"

#include <algorithm>

#include "live/journal.h"
#include "run/report.h"

namespace board::run {
namespace {

std::string first_word(const std::string& line) {
    return line.substr(0, line.find(' '));
}

std::vector<std::string> folded(const std::vector<std::string>& lines, size_t longest_run) {
    std::vector<std::string> shown;
    for (auto line = lines.begin(); line != lines.end();) {
        const std::string word = first_word(*line);
        const auto end = std::find_if(
            line, lines.end(), [&word](const auto& other) { return first_word(other) != word; });
        const auto count = static_cast<size_t>(end - line);
        if (count <= longest_run) {
            shown.insert(shown.end(), line, end);
        } else {
            shown.push_back(*line);
            shown.push_back("... and " + std::to_string(count - 1) + " more " + word);
        }
        line = end;
    }
    return shown;
}

}  // namespace

size_t Step::count(const std::string& effect) const {
    return static_cast<size_t>(std::count(effects.begin(), effects.end(), effect));
}

Step perform(Capture& capture, const std::string& call, const std::function<int()>& action) {
    clear_journal();
    capture.begin();
    const int result = action();
    return {call, result, split_lines(capture.end()), journal_lines()};
}

void show(const Step& step, size_t longest_run) {
    heading(step.call + " = " + std::to_string(step.result));
    if (!step.messages.empty()) section("Messages", folded(step.messages, longest_run));
    section("Commands and effects, in order", folded(step.effects, longest_run));
}

}  // namespace board::run
