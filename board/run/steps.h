// Calls the library step by step and shows what each call said and did.
#pragma once

#include <functional>
#include <string>

#include "run/capture.h"

namespace board::run {

class Steps {
public:
    explicit Steps(Capture& capture) : capture_(capture) {}

    // Shows the call's result, its messages, the commands and effects that it caused, and what
    // it changed in the profiles. Returns the result.
    int step(const std::string& call, const std::function<int()>& action);

    Capture& capture() const { return capture_; }

private:
    Capture& capture_;
    int count_ = 0;
};

}  // namespace board::run
