#include "boardctl/session.h"

#include <sstream>

#include "board/store/journal.h"

namespace boardctl {

Step Session::run(const std::string& text, const std::function<int()>& action) {
    progress(text);
    std::string printed = capture_.take();
    const size_t effects_before = is_virtual ? board::journal_lines().size() : 0;
    Step step{text, action(), split_lines(capture_.take()), {}};
    if (is_virtual) step.effects = board::journal_lines();
    const size_t old = std::min(effects_before, step.effects.size());
    step.effects.erase(step.effects.begin(), step.effects.begin() + static_cast<ptrdiff_t>(old));
    for (const std::string& line : step.messages) printed += line + '\n';
    capture_.put_back(printed);
    return step;
}

void Session::require_virtual(const char* what) const {
    if (!is_virtual) throw Failed(std::string("only the virtual board offers ") + what);
}

bool Session::store(const std::string& line) const {
    return !is_virtual || host.board_set_state(line.c_str()) == 0;
}

std::vector<std::string> split_lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace boardctl
