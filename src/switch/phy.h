// Access to the PHYs of the switch ports.
#pragma once

#include <stdint.h>

#include <string_view>

namespace platform {

// The value after the last "=" of the tool's answer, "0x" and digits; -1 without "=", 0 for what
// is no such number.
int32_t parse_phy_answer(std::string_view line);

// Reads a register; 0 when the tool cannot be started or read.
int32_t phy_cl22_read(int switch_port, int reg);

}  // namespace platform
