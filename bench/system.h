// The system as the library finds it in a benchmark: files below a folder of the program's own,
// commands that cost nothing, drivers that answer at once.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace bench {

void make_tree();
void remove_tree();
[[noreturn]] void give_up(std::string_view what);
std::string in_tree(std::string_view path);  // the place of a board path
void write_file(std::string_view path, std::string_view text);
std::string read_file(std::string_view path);

// Reads the file with one read() into a buffer that the next call uses again.
std::string_view read_whole(std::string_view path);

void run_shell(const std::string& command);  // a real one; ends the program when it fails

// What the drivers answer: the survey's text, and the switch for a request's four words
// (PHY address, offset, value in, value out).
extern std::string survey_answer;
extern std::function<void(uint32_t* words, bool write)> switch_answer;

}  // namespace bench
