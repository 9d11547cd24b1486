// The system as the library finds it while its paths are measured: files below a folder of the
// program's own, a host, commands and drivers that cost next to nothing.
#pragma once

#include <string>

#include "platform/records.h"

namespace bench {

inline constexpr int kButtonPin = 999;

// What the host and the drivers answer.
struct Answers {
    int bss_count = 1;
    int filter_addresses = 0;
    int switch_entries = 0;
    std::string survey;
};
extern Answers answers;

void make_tree();
void remove_tree();
void write_file(const char* path, const std::string& text);
std::string in_tree(const char* path);
[[noreturn]] void give_up(const char* what);

}  // namespace bench
