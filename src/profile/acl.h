// A BSS's MAC access control, as the driver takes it: for the profile and at run time.
#pragma once

#include <stdint.h>

#include <span>

#include "platform/records.h"
#include "src/support/text.h"

namespace platform {

inline constexpr size_t kAclSize = 4096;

// Appends "XX:XX:XX:XX:XX:XX;" for every entry in force and counts them. Stops after the entry
// that takes the text over 4080 characters, the 227th.
int list_filter_addresses(std::span<const mac_filter_entry> entries, Text& list);

// Writes the filter addresses of a BSS into a buffer of kAclSize bytes and counts them. A list
// that is full and a null buffer (count 0) are reported to the system log.
int macauth_acl_string(int32_t wl_mode, int32_t bss, char* buffer);

// The driver's AccessPolicy value of the host's policy.
int access_policy(int host_policy);

}  // namespace platform
