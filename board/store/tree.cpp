#include "board/store/tree.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace board {
namespace {

namespace fs = std::filesystem;

std::string& root_storage() {
    static std::string* const directory = new std::string;
    return *directory;
}

// Without a root we must be inside a board: board paths must never reach this machine's files.
void require_board() {
    static const bool inside = ::access("/var/board", F_OK) == 0;
    if (inside) return;
    std::fputs("board: neither inside a board nor given its directory\n", stderr);
    std::abort();
}

bool write_whole(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(fd, text.data(), text.size());
        if (written < 0) return false;
        text.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

bool replace(const std::string& place, std::string_view text) {
    std::string temporary = place + kUnfinished + ".XXXXXX";
    const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0) return false;
    const bool written = write_whole(fd, text) && ::fchmod(fd, 0644) == 0;
    ::close(fd);
    if (written && ::rename(temporary.c_str(), place.c_str()) == 0) return true;
    ::unlink(temporary.c_str());
    return false;
}

bool append(const std::string& place, std::string_view text) {
    const int fd = ::open(place.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    const bool written = fd >= 0 && ::write(fd, text.data(), text.size()) == std::ssize(text);
    if (!written) std::perror(place.c_str());
    if (fd >= 0) ::close(fd);
    return written;
}

}  // namespace

const std::string& root() {
    return root_storage();
}

void set_root(std::string directory) {
    root_storage() = std::move(directory);
}

std::string Tree::place(std::string_view path) {
    if (!path.starts_with('/')) return std::string(path);
    if (root().empty()) require_board();
    return root() + std::string(path);
}

Kind Tree::kind(std::string_view path) {
    switch (fs::symlink_status(place(path)).type()) {
        case fs::file_type::not_found:
        case fs::file_type::none:
            return Kind::none;
        case fs::file_type::regular:
            return Kind::file;
        case fs::file_type::directory:
            return Kind::directory;
        case fs::file_type::symlink:
            return Kind::link;
        default:
            return Kind::other;
    }
}

bool Tree::exists(std::string_view path) {
    return ::access(place(path).c_str(), F_OK) == 0;
}

std::optional<std::string> Tree::read(std::string_view path) {
    const std::string file = place(path);
    if (fs::is_directory(file)) return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    std::ostringstream text;
    text << stream.rdbuf();
    return std::move(text).str();
}

bool Tree::write(std::string_view path, std::string_view text, Writing how) {
    if (path.empty()) return false;
    if (how == Writing::whole) return replace(place(path), text);
    if (how == Writing::append) return append(place(path), text);
    std::ofstream file(place(path), std::ios::binary);
    file << text;
    return static_cast<bool>(file.flush());
}

bool Tree::remove(std::string_view path) {
    std::error_code failed;
    const auto count = fs::remove_all(place(path), failed);
    return !failed && count > 0;
}

void Tree::make_directories(std::string_view path) {
    std::error_code ignored;  // whoever needs the directory fails on it with a better message
    fs::create_directories(place(path), ignored);
}

// Relative, so that it holds inside the board and outside.
bool Tree::link(std::string_view path, std::string_view target) {
    const fs::path relative = fs::path(target).lexically_relative(fs::path(path).parent_path());
    return ::symlink(relative.c_str(), place(path).c_str()) == 0;
}

std::vector<std::string> Tree::entries(std::string_view directory) {
    std::vector<std::string> names;
    std::error_code missing;
    for (const auto& entry : fs::directory_iterator(place(directory), missing))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

int Tree::lock(std::string_view path) {
    const int fd = ::open(place(path).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd >= 0) ::flock(fd, LOCK_EX);
    return fd;
}

void Tree::unlock(int lock) {
    ::close(lock);
}

}  // namespace board
