// Whether the virtual board is as its configuration says, and whether the library tells what the
// board has. Each check gives its faults in sentences; nothing when all is well.
#pragma once

#include <string>
#include <vector>

#include "boardctl/session.h"

namespace boardctl {

using Faults = std::vector<std::string>;

inline void require(Faults& faults, bool good, const std::string& fault) {
    if (!good) faults.push_back(fault);
}

Faults check_calibration(Session& session);
Faults check_modules(Session& session);
Faults check_pins(Session& session);
Faults check_leds(Session& session);
Faults check_buttons(Session& session);

Faults check_bridge(Session& session);
Faults check_networks(Session& session);
Faults check_helper(Session& session);  // the network of a router that was never configured
Faults check_profiles(Session& session);

Faults check_radios(Session& session);
Faults check_stations(Session& session);
Faults check_survey(Session& session);
Faults check_access(Session& session);
Faults check_wps(Session& session);  // after a run that was stopped

Faults check_vlans(Session& session);
Faults check_mirror(Session& session);
Faults check_ports(Session& session);
Faults check_counters(Session& session);  // clears them
Faults check_wired(Session& session);

}  // namespace boardctl
