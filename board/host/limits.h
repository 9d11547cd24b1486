// What a configuration of this board may say. A state that a test sets may hold anything.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace board {

// The name of a field or a table, and the words that follow it on the line.
bool is_within_limits(std::string_view name, std::span<const std::string> words);

}  // namespace board
