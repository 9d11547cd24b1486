// The board in memory, for programs that call the library a million times: texts and devices are
// strings, commands are kept instead of run, the host's other effects do nothing. What the host
// knows is board::state() as ever.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/library_hook.h"

namespace harness {

class MemoryBoard {
public:
    MemoryBoard();
    MemoryBoard(const MemoryBoard&) = delete;
    MemoryBoard& operator=(const MemoryBoard&) = delete;
    ~MemoryBoard();

    std::string index;           // the radio index file
    std::string text;            // what every other file holds and every command prints
    std::string device;          // what every opened device holds
    std::string essid;           // what a client is linked to
    bool file_is_there = false;  // what the host says of every file
    std::vector<std::string> commands;

    // What the library set in the profiles, by path: each key with its last value, in the order of
    // their first setting. Profiles in memory count as written when they are.
    using Keys = std::vector<std::pair<std::string, std::string>>;
    std::map<std::string, Keys> profiles;

    // Answers the library's ioctls and gives its commands their status, 0 without.
    std::function<int(unsigned long request, void* record)> on_ioctl;
    std::function<int(const char* command)> on_command;

    // Streams, descriptors and locks that the library has not given back.
    size_t open_handles() const { return streams_ + devices_.size() + locks_; }

private:
    friend struct MemoryHooks;

    void divert(std::string_view name, auto* replacement) {
        hooks_.push_back(std::make_unique<LibraryHook>(name, replacement));
    }
    int run(const char* command);

    std::map<int, size_t> devices_;  // reading positions
    Keys profile_;                   // that is open
    size_t streams_ = 0;
    size_t locks_ = 0;
    FILE* nowhere_;
    std::vector<std::unique_ptr<LibraryHook>> hooks_;
};

}  // namespace harness
