// Messages to the person at the console. Each is one literal of the board's own wording.
#pragma once

namespace platform {

[[gnu::format(printf, 1, 2)]] void print_out(const char* format, ...);    // standard output
[[gnu::format(printf, 1, 2)]] void print_error(const char* format, ...);  // standard error

}  // namespace platform
