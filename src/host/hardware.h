// The host's hardware information block.
#pragma once

#include "src/host/host.h"
#include "src/host/host_buffer.h"

namespace platform {

inline hw_info hardware() {
    HostBuffer<hw_info> hw;
    get_si("hw", &hw.block);
    return hw.block;
}

}  // namespace platform
