// The board's file tree. Its files are the live state that the host library and the tools share.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace board {

// Where the tree lies: "" inside the board, where it is "/" itself. A test that stays outside sets
// a directory of its own.
const std::string& root();
void set_root(std::string directory);

// The place of an absolute board path on this machine; other paths are left as they are.
std::string in_tree(std::string_view path);

// What the name of a file that is being written holds beside its own; left by whoever is killed.
inline constexpr const char* kUnfinished = ".unfinished";

// Files of the tree, by board path.
bool path_exists(std::string_view path);
std::optional<std::string> read_text(std::string_view path);
bool write_text(std::string_view path, std::string_view text);    // over the existing file
bool replace_text(std::string_view path, std::string_view text);  // whole or not at all

std::vector<std::string> read_lines(std::string_view path);  // none when it cannot be read
bool replace_lines(std::string_view path, const std::vector<std::string>& lines);

void make_directories(std::string_view path);

// Path of a file of live state that no real board has, such as the journal. Its directory exists.
std::string live_path(std::string_view name);

}  // namespace board
