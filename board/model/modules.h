// Kernel modules that do not load, from /etc/modules.conf of the board's tree.
#pragma once

#include <map>
#include <string>

#include "board/store/configuration.h"

namespace board {

// "missing" (no such file) or "broken" (a file that the kernel refuses), by the module's file.
using ModuleFaults = std::map<std::string, std::string>;

Complaints load_module_faults(ModuleFaults& faults);
ModuleFaults module_faults();

// Files of modules have no other place in the tree.
bool is_module(const std::string& name);

}  // namespace board
