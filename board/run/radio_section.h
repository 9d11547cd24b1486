// A look at the running radios through the library: stations, networks in reach, channels, the
// repeater link, WPS, access control. Each part shows a table and returns what is wrong.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "run/session.h"
#include "run/steps.h"

namespace board::run {

using Faults = std::vector<std::string>;
using Rows = std::vector<std::vector<std::string>>;

inline void require(Faults& faults, bool good, const std::string& fault) {
    if (!good) faults.push_back(fault);
}

inline std::string number(int64_t value) {
    return std::to_string(value);
}

inline std::string joined(const Faults& texts) {
    std::string line;
    for (const std::string& text : texts) line += (line.empty() ? "" : " ") + text;
    return line;
}

Faults use_radios(const Platform& platform, Steps& steps);
Faults list_stations(const Platform& platform, Steps& steps, int wl_mode);
Faults survey_networks(const Platform& platform, Steps& steps, int wl_mode);
Faults run_wps(const Platform& platform, Steps& steps, int wl_mode);

}  // namespace board::run
