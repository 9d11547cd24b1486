// What a call works with unless it is told otherwise: the libraries, and what boards are made of.
#pragma once

#include <filesystem>

#include "board/tree/make_tree.h"

namespace boardctl {

struct Parts {
    std::filesystem::path host_library;
    std::filesystem::path platform_library;
    board::TreeParts tree;
};

// As installed with the program, else as built with it.
Parts find_parts();

const char* version();  // "1.0.0"

}  // namespace boardctl
