// What a verb works with: the libraries, the board under them, and what the calls print.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "boardctl/capture.h"
#include "boardctl/errors.h"
#include "boardctl/functions.h"

namespace boardctl {

class Folders;

inline constexpr const char* kBoardConfiguration = "/etc/board.conf";  // on the virtual board

// One call of the library: what it said and did. Effects are known on the virtual board only.
struct Step {
    std::string call;
    int result = 0;
    std::vector<std::string> messages;
    std::vector<std::string> effects;
};

class Session {
public:
    Session(const Library& its_library, Capture& capture, const Folders& its_folders, bool on_board)
        : library(its_library), folders(its_folders), is_virtual(on_board), capture_(capture) {}

    // The text stands for the call, on the terminal, too, while it takes seconds.
    template <class Type, class... Arguments>
    Step perform(const std::string& text, const Function<Type>& function, Arguments... arguments) {
        return run(text, [&] { return function(arguments...); });
    }
    template <class Type, class... Arguments>
    Step perform(const Function<Type>& function, Arguments... arguments) {
        return perform(std::string(function.name) + "()", function, arguments...);
    }

    // A line on the terminal for what takes seconds; the next one, or the end, takes its place.
    void progress(const std::string& text) { capture_.progress(text); }

    // Throws Failed on a real board.
    void require_virtual(const char* what) const;

    // A field of the host's configuration, on the virtual board alone: a real host has its own
    // ways. False when the host does not take it.
    bool store(const std::string& line) const;

    const Library& library;
    const Platform platform{library};
    const Host host{library};
    const Folders& folders;  // of the caller's files, also from the virtual board
    const bool is_virtual;

private:
    Step run(const std::string& text, const std::function<int()>& action);

    Capture& capture_;
};

std::vector<std::string> split_lines(const std::string& text);

}  // namespace boardctl
