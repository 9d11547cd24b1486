// A state as text that people read and write: one field or table row a line, as in
//
//     radio 0 bss 1 ssid "My net"
//     set easymesh 1
//     wan wan1 static
//     mac_filter 0 1 policy 2             # wl mode, BSS
//     mac_filter 0 1 entry 00:11:22:33:44:55
//     regulation JP 36 80 50 10:20 11:21  # country, channel, MHz, percent, calibration bytes
//     port 1 auto 1000 full
//
// In a regulation "*" stands for any country and -1 for any channel or width; percent is -1 for
// no limit, and a single "-" after it is a calibration table with no entry in use.
#pragma once

#include <string>

#include "board/host/state.h"
#include "board/store/configuration.h"

namespace board {

// Changes what the file names and leaves the rest. Returns a complaint for each line that is not
// understood; a board's own file must also keep within what this board may be (host/limits.h).
enum class Limits { none, board };
Complaints load_state(State& target, const std::string& path, Limits limits = Limits::none);

// Writes what differs from the factory state; loading it over that gives the same state again.
bool save_state(const State& source, const std::string& path);

}  // namespace board
