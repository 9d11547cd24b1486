// Texts that the driver prints into a file.
#pragma once

#include <string_view>

#include "src/support/command.h"
#include "src/support/stream.h"

namespace platform {

inline constexpr size_t kDriverLineSize = 256;  // a longer line reads as several

// Runs a command that prints into the file of that path. A link, FIFO or device in the file's place
// is removed first: the shell would follow it, and its reader wait. False when there is no whole
// command, when what is in the way stays, as a directory does, or when the command left such.
bool run_driver_query(const AnyCommand& command, const char* path);

// Runs the command and opens the file that it wrote. A null stream when there is none to read; also
// for a name that could lead out of the file's folder or does not fit, for which nothing is run.
File driver_answer(std::string_view ifname, const AnyCommand& command, const Text& path);

}  // namespace platform
