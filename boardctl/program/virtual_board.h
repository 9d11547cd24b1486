// The virtual board that calls work on, kept in a folder between them.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "board/tree/enter.h"
#include "board/tree/make_tree.h"
#include "boardctl/session.h"

namespace boardctl {

class VirtualBoard {
public:
    // Only one call at a time works on a board; others wait. Throws Missing for a folder that is
    // neither the caller's own board nor an empty one.
    VirtualBoard(const std::filesystem::path& directory, const board::TreeParts& parts);

    void make_if_missing() const;          // throws Missing for a board of another version
    void make(bool erased_factory) const;  // as it leaves the factory, or before that

    // Throws UsageError unless all of its configuration is understood, after naming each line on
    // standard error that is not.
    void check_configuration(const Host& host) const;

    void power_on() const { board::power_on(directory_); }

    // Does the work on the board and returns its status, kNotAllowed where that cannot be.
    int enter(const std::function<int()>& work) const { return board::enter(directory_, work); }

    // On the board: the host knows its configuration; what changed of it is kept.
    static void load(const Host& host);
    static void save(const Host& host);

    static std::filesystem::path usual_place();

private:
    std::filesystem::path directory_;
    board::TreeParts parts_;
    board::Folder kind_{};
};

}  // namespace boardctl
