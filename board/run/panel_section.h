// What an owner sees and presses: the LEDs through a silent hour, the reset button.
#pragma once

#include <string>
#include <vector>

#include "run/capture.h"
#include "run/session.h"

namespace board::run {

// Shows both and returns what is wrong.
std::vector<std::string> try_panel(const Platform& platform, Capture& capture);

}  // namespace board::run
