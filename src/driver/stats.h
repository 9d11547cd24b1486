// Lines of the driver's statistics, KEY=VALUES.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "platform/records.h"
#include "src/support/stream.h"

namespace platform {

// The values of the first line with the key; the text lives in the buffer.
std::optional<std::string_view> find_stats(File& file, std::string_view key,
                                           std::span<char> buffer);

// "RDMode,ChMovingTime,RDCount". Values that are missing or no radar mode leave their words.
void read_dfs_values(std::string_view values, dfs_info& info);

}  // namespace platform
