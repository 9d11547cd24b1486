// The reader of the board's configuration files, /etc/*.conf. An empty line and a comment say
// nothing.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace board {

using Complaints = std::vector<std::string>;
using TakeLine = std::function<bool(std::span<const std::string> words)>;

// Words as board/store/words.h splits them, or the two sides of KEY=VALUE.
enum class LineForm { words, key_value };

// Hands the words of each line over. Returns "FILE:LINE: not understood: TEXT" for each line that
// is not taken. The file is named by its place on this machine; a missing one has no lines.
Complaints read_configuration(const std::string& file, const TakeLine& take,
                              LineForm form = LineForm::words);

}  // namespace board
