// What somebody who mistyped a word may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace boardctl {

// "; did you mean 'start'?" for "strat"; empty when none of the words comes near.
std::string suggestion(std::string_view word, const std::vector<std::string>& known);

// "a, b or c"
std::string alternatives(const std::vector<std::string>& words);

}  // namespace boardctl
