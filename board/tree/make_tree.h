// A fresh file system of the board, made in a directory of this machine.
#pragma once

#include <filesystem>

namespace board {

// What the calibration partition "Factory" holds: the radios' data, or nothing yet.
enum class FactoryData { good, erased };

// An image of the board's files, and the program that is all of its tools.
struct TreeParts {
    std::filesystem::path image;
    std::filesystem::path tool;
};

// A file with this name says that a folder is a board and of which version; it is empty while no
// whole board is in there. Nothing is ever removed from a folder without it.
inline constexpr const char* kMark = ".virtual-board";

enum class Folder { empty, unfinished, board, other_version, foreign };
Folder kind_of(const std::filesystem::path& directory);

// The directory exists and is not foreign. What it holds is kept until the new tree is whole, which
// then takes its place. Throws std::exception when the tree cannot be made.
void make_tree(const std::filesystem::path& directory, const TreeParts& parts, FactoryData factory);

// What a start of the board leaves: flash and profiles as they were, everything else afresh.
void power_on(const std::filesystem::path& directory);

}  // namespace board
