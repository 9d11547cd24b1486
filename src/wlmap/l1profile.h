// The radio index file: which interfaces, profile and calibration data each radio has.
#pragma once

#include <stdint.h>

#include <span>
#include <string_view>

namespace platform {

inline constexpr size_t kL1ValueSize = 128;

// Looks a KEY=VALUE line up and copies its value; false, with the output untouched, when the key
// or the file is missing. An empty output only tests for the key.
bool l1profile_get(std::string_view key, std::span<char> value);

// Reads "INDEX<radio>_<name>" through the host's reader, whose result it returns: -1, with the
// output untouched, when it is missing. The radio index is taken as it is, the key is cut to 31
// characters and the value to the output's size, at most 128.
int l1profile_get_index_value(int32_t radio, std::string_view name, std::span<char> value);

}  // namespace platform
