#include "boardctl/program/virtual_board.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "board/host/entry.h"
#include "boardctl/errors.h"
#include "boardctl/text.h"

namespace boardctl {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const fs::path& directory, const std::string& reason) {
    throw Missing(directory.string() + ' ' + reason);
}

template <class Work>
void or_missing(const Work& work) {
    try {
        work();
    } catch (const fs::filesystem_error& error) {
        throw Missing(error.what());
    }
}

void require_own_folder(const fs::path& directory) {
    struct stat found {};
    if (::lstat(directory.c_str(), &found) != 0) refuse(directory, std::strerror(errno));
    if (S_ISLNK(found.st_mode)) refuse(directory, "is a symbolic link: name the folder itself");
    if (!S_ISDIR(found.st_mode)) refuse(directory, "is no folder");
    if (found.st_uid != ::geteuid())
        refuse(directory, "belongs to another user (" + std::to_string(found.st_uid) +
                              "): name a folder of your own with --board");
}

// Held until the board's last process ends: a child keeps it, but not the programs that one runs.
void lock(const fs::path& directory) {
    const int fd = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0 || ::flock(fd, LOCK_EX) != 0)
        refuse(directory, std::string("cannot be used: ") + std::strerror(errno));
}

fs::path without_last_slash(const fs::path& directory) {
    const fs::path whole = fs::absolute(directory).lexically_normal();
    return whole.has_filename() ? whole : whole.parent_path();
}

}  // namespace

VirtualBoard::VirtualBoard(const fs::path& directory, const board::TreeParts& parts)
    : directory_(without_last_slash(directory)), parts_(parts) {
    or_missing([&] {
        fs::create_directories(directory_);
        require_own_folder(directory_);
        lock(directory_);
        kind_ = board::kind_of(directory_);
    });
    if (kind_ == board::Folder::foreign)
        refuse(directory_, std::string("is not empty and no virtual board (it has no ") +
                               board::kMark + "): name an empty or a new folder with --board");
}

void VirtualBoard::make_if_missing() const {
    if (kind_ == board::Folder::other_version)
        refuse(directory_,
               "is a board of another version: make it anew with \"boardctl start --fresh\"");
    if (kind_ != board::Folder::board) make(false);
}

void VirtualBoard::make(bool erased_factory) const {
    const auto factory = erased_factory ? board::FactoryData::erased : board::FactoryData::good;
    or_missing([&] { board::make_tree(directory_, parts_, factory); });
}

void VirtualBoard::check_configuration(const Host& host) const {
    const auto complain = [](const char* text) {
        std::fprintf(stderr, "%s\n", shown(text).c_str());
    };
    if (host.board_check_configuration(directory_.c_str(), complain) != 0)
        throw UsageError("correct the board's configuration first");
}

void VirtualBoard::load(const Host& host) {
    if (host.board_load_state(kBoardConfiguration) != 0)
        throw Failed(std::string("the board's ") + kBoardConfiguration + " is not understood");
}

void VirtualBoard::save(const Host& host) {
    if (host.board_save_state(kBoardConfiguration) != 0)
        throw Failed(std::string("cannot write ") + kBoardConfiguration);
}

fs::path VirtualBoard::usual_place() {
    if (const char* const state = std::getenv("XDG_STATE_HOME"); state != nullptr && *state != 0)
        return fs::path(state) / "boardctl/board";
    const char* const home = std::getenv("HOME");
    if (home == nullptr || *home == 0) throw Missing("no home folder: name a board with --board");
    return fs::path(home) / ".local/state/boardctl/board";
}

}  // namespace boardctl
