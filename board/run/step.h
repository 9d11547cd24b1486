// One call of the library: what it said and did.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "run/capture.h"

namespace board::run {

struct Step {
    std::string call;
    int result;
    std::vector<std::string> messages;
    std::vector<std::string> effects;  // the journal

    size_t count(const std::string& effect) const;
};
Step perform(Capture& capture, const std::string& call, const std::function<int()>& action);

// Effects and messages in order; a run of more than this many lines that begin with the same word
// is shown as its first line and a count.
void show(const Step& step, size_t longest_run = 8);

}  // namespace board::run
