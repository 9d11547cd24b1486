// The Ethernet switch: VLANs, stored port settings, mirror, links, counters, wired stations.
#pragma once

#include <string>
#include <vector>

#include "run/capture.h"
#include "run/session.h"

namespace board::run {

// Sets the switch up, shows it and returns what is wrong with it.
std::vector<std::string> start_switch(const Platform& platform, Capture& capture);

}  // namespace board::run
