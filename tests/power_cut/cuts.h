// Power fails at a chosen write, rename or command: the process that works on the board ends there,
// in the middle of what it writes. Flash is erased by blocks and written in pieces, as NOR flash
// is.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace power_cut {

// Of the files that outlive a start; the folders are those of a board.
void copy_files(const std::string& from, const std::string& to);

// Runs the work in a process of its own, up to its nth point (0: to its end); the points passed.
int run_apart(const std::function<void()>& work, int cut_at);

// The process may end here. Those that a pipe feeds go on with what they got: last.
void point(const std::function<void()>& last = {});

// What the board's tools do to the flash, point by point.
void write_flash(std::string_view partition, std::string_view data);
std::string boot_variable(const std::string& name);
int run_tool(const std::string& command);

// The library's way to files and pipes, with a point in the middle of each write.
size_t fwrite(const void* bytes, size_t size, size_t count, FILE* stream);
FILE* popen(const char* command, const char* mode);
int pclose(FILE* pipe);

}  // namespace power_cut
