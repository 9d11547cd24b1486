// Buffers for the host's readers that are not told a size.
#pragma once

namespace platform {

// What such a reader may write by its contract, and room behind it for a host that writes more.
// The block is zeroed; what lies behind it is never read.
template <class Block>
struct HostBuffer {
    Block block = {};
    char spare[512];
};

}  // namespace platform
