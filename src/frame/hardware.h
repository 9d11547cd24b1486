// The host's hardware information block.
#pragma once

#include "frame/host.h"

namespace platform {

inline hw_info hardware() {
    hw_info hw = {};
    get_si("hw", &hw);
    return hw;
}

}  // namespace platform
