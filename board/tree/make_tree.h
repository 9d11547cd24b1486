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

// The directory must be missing or empty. Throws std::exception when the tree cannot be made.
void make_tree(const std::filesystem::path& directory, const TreeParts& parts, FactoryData factory);

// What a start of the board leaves: flash and profiles as they were, everything else afresh.
void power_on(const std::filesystem::path& directory);

bool is_tree(const std::filesystem::path& directory);

}  // namespace board
