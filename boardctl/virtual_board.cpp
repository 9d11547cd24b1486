#include "boardctl/virtual_board.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cstdio>
#include <cstdlib>

#include "boardctl/errors.h"
#include "boardctl/text.h"
#include "host/entry.h"
#include "tree/enter.h"

namespace boardctl {
namespace {

namespace fs = std::filesystem;

// Held until the process ends. What we start must not hold it.
void lock(const fs::path& directory) {
    const int fd = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0 || ::flock(fd, LOCK_EX) != 0)
        throw Missing("cannot use the board in " + directory.string());
}

}  // namespace

VirtualBoard::VirtualBoard(const fs::path& directory, const board::TreeParts& parts)
    : directory_(fs::absolute(directory)), parts_(parts) {
    try {
        fs::create_directories(directory_);
        lock(directory_);
        if (!board::is_tree(directory_)) make(board::FactoryData::good);
    } catch (const fs::filesystem_error& error) {
        throw Missing(error.what());
    }
}

void VirtualBoard::make(board::FactoryData factory) const {
    if (board::is_tree(directory_))
        for (const auto& entry : fs::directory_iterator(directory_)) fs::remove_all(entry.path());
    if (!fs::is_empty(directory_)) throw Missing(directory_.string() + " holds no board");
    board::make_tree(directory_, parts_, factory);
}

void VirtualBoard::check_configuration(const Library& library) const {
    const auto complain = [](const char* text) {
        std::fprintf(stderr, "%s\n", shown(text).c_str());
    };
    if (HOST_CALL(library, board_check_configuration)(directory_.c_str(), complain) != 0)
        throw UsageError("correct the board's configuration first");
}

void VirtualBoard::power_on() const {
    board::power_on(directory_);
}

void VirtualBoard::remake(bool erased_factory) const {
    make(erased_factory ? board::FactoryData::erased : board::FactoryData::good);
}

int VirtualBoard::enter(const std::function<int()>& work) const {
    return board::enter(directory_, work);
}

void VirtualBoard::load(const Library& library) {
    if (HOST_CALL(library, board_load_state)(kBoardConfiguration) != 0)
        throw Failed(std::string("the board's ") + kBoardConfiguration + " is not understood");
}

void VirtualBoard::save(const Library& library) {
    if (HOST_CALL(library, board_save_state)(kBoardConfiguration) != 0)
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
