// What a start of the platform does before the radios: calibration data, modules, pins.
#pragma once

#include <string>
#include <vector>

#include "run/capture.h"
#include "run/session.h"

namespace board::run {

// Shows one start and returns its faults. A second start of the board must find good data.
std::vector<std::string> start_platform(const Platform& platform, Capture& capture);

// The first start of a board: 0 when it went well, faults printed.
int run_first_start(const Platform& platform, Capture& capture);

}  // namespace board::run
