#include "src/driver/stats.h"

#include <algorithm>

#include "src/support/key_line.h"
#include "src/support/number.h"
#include "src/support/split.h"
#include "src/support/text.h"

namespace platform {

std::optional<std::string_view> find_stats(File& file, std::string_view key,
                                           std::span<char> buffer) {
    while (const auto line = file.read_line(buffer))
        if (const auto values = value_in_line(*line, key)) return values;
    return {};
}

void read_dfs_values(std::string_view text, dfs_info& info) {
    Split values(text, ',');
    if (const auto mode = values.next_filled()) {
        const int32_t rd_mode = leading_decimal(*mode);
        if (rd_mode >= 0 && rd_mode <= 2) info.rd_mode = rd_mode;
    }
    const auto moving_time = values.next_filled();
    info.channel_moving_time = moving_time ? leading_decimal(*moving_time) : 0;
    if (!moving_time) return;
    const auto count = values.next_filled();
    const int64_t remaining =
        count ? int64_t{info.channel_moving_time} - leading_decimal(*count) : 0;
    info.remaining = static_cast<int32_t>(std::clamp(remaining, int64_t{0}, int64_t{INT32_MAX}));
}

}  // namespace platform
