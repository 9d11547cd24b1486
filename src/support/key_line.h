// Lines of the form KEY=VALUE.
#pragma once

#include <optional>
#include <string_view>

#include "src/support/text.h"

namespace platform {

// What follows the first "=" of a line with exactly this key, up to its line feed. No blank is
// trimmed on either side.
constexpr std::optional<std::string_view> value_in_line(std::string_view line,
                                                        std::string_view key) {
    if (!has_prefix(line, key)) return {};
    line.remove_prefix(key.size());
    if (!line.starts_with('=')) return {};
    line.remove_prefix(1);
    if (line.ends_with('\n')) line.remove_suffix(1);
    return line;
}

}  // namespace platform
