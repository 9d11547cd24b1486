// Whether the virtual board is as its configuration says, and whether the library tells what the
// board has.
#pragma once

#include <string>
#include <vector>

#include "boardctl/session.h"

namespace boardctl {

struct Faults {
    std::vector<std::string> texts;  // sentences; none when all is well

    void require(bool good, const std::string& fault) {
        if (!good) texts.push_back(fault);
    }
};

using Check = void(Session& session, Faults& faults);

Check check_calibration, check_modules, check_pins, check_leds, check_buttons;
Check check_bridge, check_networks, check_profiles;
Check check_helper;  // the network of a router that was never configured
Check check_radios, check_stations, check_survey, check_access;
Check check_wps;  // after a run that was stopped
Check check_vlans, check_mirror, check_ports, check_wired;
Check check_counters;  // clears them

}  // namespace boardctl
