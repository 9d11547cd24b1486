#include "board/store/memory.h"

namespace board {

std::string_view Memory::resolve(std::string_view path, std::string&& place) const {
    while (path.ends_with('/')) path.remove_suffix(1);
    if (!has_links_) return path;
    for (size_t at = path.find('/', 1); at != path.npos; at = path.find('/', at + 1)) {
        const auto node = nodes_.find(path.substr(0, at));
        if (node == nodes_.end() || node->second.kind != Kind::link) continue;
        place = node->second.text + std::string(path.substr(at));
        path = place;
        at = 0;
    }
    return path;
}

std::string_view Memory::follow(std::string_view path, std::string&& place) const {
    path = resolve(path, std::move(place));
    if (!has_links_) return path;
    for (auto node = nodes_.find(path); node != nodes_.end(); node = nodes_.find(path)) {
        if (node->second.kind != Kind::link) break;
        path = resolve(node->second.text, std::move(place));
    }
    return path;
}

const Memory::Node* Memory::find(std::string_view path) const {
    const auto node = nodes_.find(follow(path));
    return node != nodes_.end() ? &node->second : nullptr;
}

Memory::Node* Memory::change(std::string_view path, Kind kind) {
    if (changes == last_change) return nullptr;
    auto node = nodes_.find(path);
    if (node == nodes_.end()) {
        const auto folder = nodes_.find(path.substr(0, path.rfind('/')));
        if (folder == nodes_.end() || folder->second.kind != Kind::directory) return nullptr;
        node = nodes_.try_emplace(std::string(path), Node{kind, ""}).first;
    }
    if (node->second.kind != kind) return nullptr;
    ++changes;
    return &node->second;
}

Kind Memory::kind(std::string_view path) {
    const auto node = nodes_.find(resolve(path));
    return node != nodes_.end() ? node->second.kind : Kind::none;
}

bool Memory::exists(std::string_view path) {
    return find(path) != nullptr;
}

std::optional<std::string> Memory::read(std::string_view path) {
    const Node* const node = find(path);
    if (node == nullptr || node->kind != Kind::file) return std::nullopt;
    return node->text;
}

bool Memory::write(std::string_view path, std::string_view text, Writing how) {
    // A file that is written whole takes the place of a link.
    Node* const node = change(how == Writing::whole ? resolve(path) : follow(path), Kind::file);
    if (node == nullptr) return false;
    if (how != Writing::append) node->text.clear();
    node->text += text;
    return true;
}

bool Memory::remove(std::string_view path) {
    const std::string first(resolve(path));
    const auto node = nodes_.find(first);
    if (node == nodes_.end() || changes == last_change) return false;
    ++changes;
    nodes_.erase(node);
    const std::string below = first + '/';
    for (auto next = nodes_.lower_bound(below);
         next != nodes_.end() && next->first.starts_with(below);)
        next = nodes_.erase(next);
    return true;
}

void Memory::make_directories(std::string_view path) {
    if (nodes_.contains(follow(path))) return;
    const std::string all(follow(path));
    for (size_t end = 0; end != all.npos;) {
        end = all.find('/', end + 1);
        change(all.substr(0, end), Kind::directory);
    }
}

bool Memory::link(std::string_view path, std::string_view target) {
    if (kind(path) != Kind::none) return false;
    Node* const node = change(resolve(path), Kind::link);
    if (node != nullptr) node->text = target;
    has_links_ = has_links_ || node != nullptr;
    return node != nullptr;
}

bool Memory::make_fifo(std::string_view path) {
    return change(resolve(path), Kind::other) != nullptr;
}

void Memory::restore(const Memory& before) {
    auto now = nodes_.begin();
    for (const auto& [path, node] : before.nodes_) {
        while (now != nodes_.end() && now->first < path) now = nodes_.erase(now);
        if (now == nodes_.end() || now->first != path)
            now = nodes_.emplace_hint(now, path, node);
        else if (now->second != node)
            now->second = node;
        ++now;
    }
    nodes_.erase(now, nodes_.end());
    has_links_ = before.has_links_;
    changes = before.changes;
}

std::vector<std::string> Memory::entries(std::string_view directory) {
    const std::string start = std::string(follow(directory)) + '/';
    std::vector<std::string> names;
    for (auto node = nodes_.lower_bound(start);
         node != nodes_.end() && node->first.starts_with(start); ++node)
        if (node->first.find('/', start.size()) == std::string::npos)
            names.push_back(node->first.substr(start.size()));
    return names;
}

}  // namespace board
