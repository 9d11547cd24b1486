#include "board/store/store.h"

#include <algorithm>

#include "board/store/tree.h"

namespace board {
namespace {

Store*& chosen() {
    static Store* store = nullptr;
    return store;
}

}  // namespace

Store& store() {
    static Tree* const tree = new Tree;
    return chosen() != nullptr ? *chosen() : *tree;
}

void use_store(Store* other) {
    chosen() = other;
}

std::string in_tree(std::string_view path) {
    return chosen() != nullptr ? std::string(path) : Tree::place(path);
}

bool path_exists(std::string_view path) {
    return store().exists(path);
}

std::optional<std::string> read_text(std::string_view path) {
    return store().read(path);
}

bool write_text(std::string_view path, std::string_view text) {
    return store().write(path, text, Writing::over);
}

bool replace_text(std::string_view path, std::string_view text) {
    return store().write(path, text, Writing::whole);
}

std::vector<std::string> split_lines(std::string_view text) {
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::vector<std::string> read_lines(std::string_view path) {
    return split_lines(read_text(path).value_or(""));
}

bool replace_lines(std::string_view path, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return replace_text(path, text);
}

void make_directories(std::string_view path) {
    store().make_directories(path);
}

std::string live_path(std::string_view name) {
    std::string path = "/var/board/" + std::string(name);
    make_directories(std::string_view(path).substr(0, path.rfind('/')));
    return path;
}

}  // namespace board
