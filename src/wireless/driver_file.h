// Texts that the driver prints into a file of the interface's name.
#pragma once

#include <string_view>

#include "support/command.h"
#include "support/stream.h"

namespace platform {

inline constexpr size_t kDriverLineSize = 256;  // a longer line reads as several

// Runs the command and opens the file that it wrote. A null stream when it cannot be opened; also
// for a name that could lead out of the file's folder or does not fit, for which nothing is run.
inline File driver_answer(std::string_view ifname, const AnyCommand& command, const Text& path) {
    if (ifname.find('/') != std::string_view::npos || !path.ok() || command.text() == nullptr)
        return File(nullptr);
    run_shell(command);
    return File(open_for_reading(path.c_str()));
}

}  // namespace platform
