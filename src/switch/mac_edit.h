// MAC addresses as the host hands them to be deleted.
#pragma once

#include <stdint.h>

#include "src/support/mac.h"

namespace platform {

// Six bytes of a text "00:1a:2B:3c:4D:5e" or with "-", or of six raw bytes. A text is known by a
// separator among its first six characters; fields that it lacks, and all from the first that is no
// number on, are 0.
void read_mac(const char* address, uint8_t (&mac)[kMacSize]);

}  // namespace platform
