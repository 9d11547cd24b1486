// Text of others, such as network names from the air, made fit for a terminal and for JSON.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace boardctl {

// Printable characters stay as they are, a backslash is doubled, and every other byte reads \xNN:
// controls, invalid UTF-8, and characters that would hide or turn the text around them. The
// result is valid UTF-8, and the bytes can be told from it.
std::string shown(std::string_view bytes);

// Places on a terminal that shown() text takes.
size_t columns(std::string_view text);

}  // namespace boardctl
