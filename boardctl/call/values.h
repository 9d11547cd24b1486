// What a call left, as JSON; texts stand in it as shown() gives them.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "border/frame.h"

namespace boardctl {

// A record's fields by name, in their order. A list shows as many entries as its field "count"
// says.
nlohmann::ordered_json record_values(const border::Record& record, const unsigned char* bytes);

// What the function filled, by the names of its parameters.
nlohmann::ordered_json frame_values(const border::Function& function, const border::Frame& frame,
                                    uintptr_t result);

}  // namespace boardctl
