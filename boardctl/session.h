// What a verb works with: the libraries, the board under them, and what the calls print.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "boardctl/call/call.h"
#include "boardctl/capture.h"
#include "boardctl/errors.h"
#include "boardctl/library.h"

namespace boardctl {

// One call of the library: what it said and did. Effects are known on the virtual board only.
struct Step {
    std::string call;
    int result = 0;
    std::vector<std::string> messages;
    std::vector<std::string> effects;
};

class Session {
public:
    Session(const Library& its_library, Capture& capture, const Folders& folders, bool on_virtual)
        : library(its_library), is_virtual(on_virtual), capture_(capture), folders_(folders) {}

    Step perform(const std::string& call, const std::function<int()>& action);

    // A line on the terminal for what takes seconds; the next one, or the end, takes its place.
    void progress(const std::string& text) { capture_.progress(text); }

    // The caller's files, also from the virtual board.
    const Folders& folders() const { return folders_; }

    // Throws Failed on a real board.
    void require_virtual(const char* what) const;

    const Library& library;
    const bool is_virtual;

private:
    Capture& capture_;
    const Folders& folders_;
};

std::vector<std::string> split_lines(const std::string& text);

}  // namespace boardctl
