// Boot variables, through the board's uboot_env tool.
#pragma once

#include <string_view>

namespace platform {

// Reads one line into the cleared destination. 1 when the tool could be started and read,
// else 0 (also when there is no room or the name makes no whole command).
int get_uboot_env(const char* name, char* destination, int size);

// Rewrites the "Config" partition with the variable set. 0, whatever came of it.
int set_uboot_env(std::string_view name, std::string_view value);

}  // namespace platform
