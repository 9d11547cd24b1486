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
// is not taken. The file is one of the board; a missing one has no lines.
Complaints read_configuration(std::string_view path, const TakeLine& take,
                              LineForm form = LineForm::words);

// The same of lines that come from elsewhere.
Complaints read_configuration(const std::string& name, const std::vector<std::string>& lines,
                              const TakeLine& take, LineForm form);

}  // namespace board
