// A hot path of the library, and the ways of doing its work that are measured beside each other.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Path {
    std::string name;
    std::string unit;        // of the sizes
    std::vector<int> sizes;  // from small to full
    std::function<void(int size)> prepare;
    std::function<void()> library;
    std::function<void()> limit;         // the same by bare calls and nothing else
    std::function<std::string()> shell;  // a user's command for it; none where nobody would
    bool waits = false;                  // pauses are its work, so one call is enough
};

// What the limits alone may not make the compiler leave out.
void keep(const void* result);

// The radio index file with so many lines, those of the two radios last.
inline constexpr int kRadioLines = 10;
void write_index(int lines);

void add_profile_paths(std::vector<Path>& paths);
void add_text_paths(std::vector<Path>& paths);
void add_switch_paths(std::vector<Path>& paths);
void add_load_path(std::vector<Path>& paths);

}  // namespace bench
