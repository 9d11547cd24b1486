// Commands through the host's own runner.
#pragma once

#include "frame/host.h"
#include "support/command.h"

namespace platform {

// The exit status of the command, 0 on success; -1 when there is no whole command.
inline int run_host(const char* command) {
    return command != nullptr ? system2("%s", command) : -1;
}

template <size_t kSize>
int run_host(const Command<kSize>& command) {
    return run_host(command.text());
}

}  // namespace platform
