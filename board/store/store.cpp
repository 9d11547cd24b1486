#include "board/store/store.h"

#include <fcntl.h>
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

}  // namespace

const std::string& root() {
    return root_storage();
}

void set_root(std::string directory) {
    root_storage() = std::move(directory);
}

std::string in_tree(std::string_view path) {
    if (!path.starts_with('/')) return std::string(path);
    if (root().empty()) require_board();
    return root() + std::string(path);
}

bool path_exists(std::string_view path) {
    return ::access(in_tree(path).c_str(), F_OK) == 0;
}

std::optional<std::string> read_text(std::string_view path) {
    const std::string place = in_tree(path);
    if (std::filesystem::is_directory(place)) return std::nullopt;
    std::ifstream file(place, std::ios::binary);
    if (!file) return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return std::move(text).str();
}

void make_directories(std::string_view path) {
    std::error_code ignored;  // whoever needs the directory fails on it with a better message
    std::filesystem::create_directories(in_tree(path), ignored);
}

std::string live_path(std::string_view name) {
    std::string path = "/var/board/" + std::string(name);
    make_directories(path.substr(0, path.rfind('/')));
    return path;
}

bool write_text(std::string_view path, std::string_view text) {
    if (path.empty()) return false;
    const std::string place = in_tree(path);
    std::ofstream file(place, std::ios::binary);
    file << text;
    return static_cast<bool>(file.flush());
}

bool replace_text(std::string_view path, std::string_view text) {
    if (path.empty()) return false;
    const std::string place = in_tree(path);
    std::string temporary = place + kUnfinished + ".XXXXXX";
    const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0) return false;
    const bool written = write_whole(fd, text) && ::fchmod(fd, 0644) == 0;
    ::close(fd);
    if (written && ::rename(temporary.c_str(), place.c_str()) == 0) return true;
    ::unlink(temporary.c_str());
    return false;
}

std::vector<std::string> read_lines(std::string_view path) {
    const std::string text = read_text(path).value_or("");
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

bool replace_lines(std::string_view path, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return replace_text(path, text);
}

}  // namespace board
