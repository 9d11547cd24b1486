// The board's files, by board path: the live state that the host library, the driver and the tools
// share. They lie in a tree that processes share, or in the memory of one process.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace board {

enum class Kind { none, file, directory, link, other };

enum class Writing {
    over,    // the existing file
    whole,   // or not at all
    append,  // at once: lines of processes that run at the same time never mix
};

class Store {
public:
    virtual ~Store() = default;

    virtual Kind kind(std::string_view path) = 0;    // of a link itself
    virtual bool exists(std::string_view path) = 0;  // at the end of all links
    virtual std::optional<std::string> read(std::string_view path) = 0;
    virtual bool write(std::string_view path, std::string_view text, Writing how) = 0;
    virtual bool remove(std::string_view path) = 0;  // a directory with all that is in it
    virtual void make_directories(std::string_view path) = 0;
    virtual bool link(std::string_view path, std::string_view target) = 0;
    virtual std::vector<std::string> entries(std::string_view directory) = 0;  // sorted

    virtual int lock(std::string_view path) = 0;  // waits for it; -1 on failure
    virtual void unlock(int lock) = 0;
};

// The store that board paths are of: the tree, unless another one was chosen.
Store& store();
void use_store(Store* other);  // null: the tree

// Where the tree lies: "" inside the board, where it is "/" itself. A test that stays outside sets
// a directory of its own.
const std::string& root();
void set_root(std::string directory);

// The place of an absolute board path in the tree, on this machine; other paths, and those of a
// store in memory, are left as they are.
std::string in_tree(std::string_view path);

// What the name of a file that is being written holds beside its own; left by whoever is killed.
inline constexpr const char* kUnfinished = ".unfinished";

// Files of the store.
bool path_exists(std::string_view path);
std::optional<std::string> read_text(std::string_view path);
bool write_text(std::string_view path, std::string_view text);
bool replace_text(std::string_view path, std::string_view text);

std::vector<std::string> read_lines(std::string_view path);  // none when it cannot be read
bool replace_lines(std::string_view path, const std::vector<std::string>& lines);
std::vector<std::string> split_lines(std::string_view text);

void make_directories(std::string_view path);

// Path of a file of live state that no real board has, such as the journal. Its directory exists.
std::string live_path(std::string_view name);

}  // namespace board
