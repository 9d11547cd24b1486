#include "wireless/driver_stats.h"

#include <algorithm>

#include "support/key_line.h"
#include "support/number.h"
#include "support/split.h"
#include "support/text.h"

namespace platform {
namespace {

// The next value, if there is one and it is not empty.
std::optional<std::string_view> next_value(Split& values) {
    const auto value = values.next();
    return value && !value->empty() ? value : std::nullopt;
}

}  // namespace

std::optional<std::string_view> find_stats(File& file, std::string_view key,
                                           std::span<char> buffer) {
    while (const auto line = file.read_line(buffer))
        if (const auto values = value_in_line(*line, key)) return values;
    return {};
}

void read_dfs_values(std::string_view text, dfs_info& info) {
    Split values(text, ',');
    if (const auto mode = next_value(values)) {
        const int32_t rd_mode = leading_decimal(*mode);
        if (rd_mode >= 0 && rd_mode <= 2) info.rd_mode = rd_mode;
    }
    const auto moving_time = next_value(values);
    info.channel_moving_time = moving_time ? leading_decimal(*moving_time) : 0;
    if (!moving_time) return;
    const std::string_view count = values.rest();
    const int64_t remaining =
        count.empty() ? 0 : int64_t{info.channel_moving_time} - leading_decimal(count);
    info.remaining = static_cast<int32_t>(std::clamp(remaining, int64_t{0}, int64_t{INT32_MAX}));
}

}  // namespace platform
