// Commands through the host's own runner.
#pragma once

#include "src/host/host.h"
#include "src/support/command.h"

namespace platform {

// The exit status of the command, 0 on success; -1 when there is no whole command.
inline int run_host(const AnyCommand& command) {
    return command.text() != nullptr ? system2("%s", command.text()) : -1;
}

}  // namespace platform
