#include "board/store/memory.h"

namespace board {

std::string Memory::resolve(std::string_view path) const {
    std::string resolved(path);
    while (resolved.ends_with('/')) resolved.pop_back();
    if (!has_links_) return resolved;
    for (size_t at = resolved.find('/', 1); at != resolved.npos; at = resolved.find('/', at + 1)) {
        const auto node = nodes_.find(std::string_view(resolved).substr(0, at));
        if (node == nodes_.end() || node->second.kind != Kind::link) continue;
        resolved = node->second.text + resolved.substr(at);
        at = 0;
    }
    return resolved;
}

std::string Memory::follow(std::string_view path) const {
    std::string resolved = resolve(path);
    if (!has_links_) return resolved;
    for (auto node = nodes_.find(resolved); node != nodes_.end(); node = nodes_.find(resolved)) {
        if (node->second.kind != Kind::link) break;
        resolved = resolve(node->second.text);
    }
    return resolved;
}

const Memory::Node* Memory::find(std::string_view path) const {
    const auto node = nodes_.find(follow(path));
    return node != nodes_.end() ? &node->second : nullptr;
}

Memory::Node* Memory::change(const std::string& path, Kind kind) {
    const auto folder = nodes_.find(std::string_view(path).substr(0, path.rfind('/')));
    if (folder == nodes_.end() || folder->second.kind != Kind::directory) return nullptr;
    if (changes == last_change) return nullptr;
    Node& node = nodes_.try_emplace(path, Node{kind, ""}).first->second;
    if (node.kind != kind) return nullptr;
    ++changes;
    return &node;
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
    const std::string first = resolve(path);
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
    const std::string all = follow(path);
    if (nodes_.contains(all)) return;
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

std::vector<std::string> Memory::entries(std::string_view directory) {
    const std::string start = follow(directory) + '/';
    std::vector<std::string> names;
    for (auto node = nodes_.lower_bound(start);
         node != nodes_.end() && node->first.starts_with(start); ++node)
        if (node->first.find('/', start.size()) == std::string::npos)
            names.push_back(node->first.substr(start.size()));
    return names;
}

}  // namespace board
