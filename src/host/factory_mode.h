// The factory test mode: a marker file, whose presence is the mode.
#pragma once

#include "src/host/host.h"

namespace platform {

inline constexpr const char* kFactoryMarker = "/tmp/factory_default_mode";

inline bool in_factory_mode() {
    return file_exists(kFactoryMarker) != 0;
}

}  // namespace platform
