// The store in the memory of one process. A copy of it is the board at another time.
#pragma once

#include <map>

#include "board/store/store.h"

namespace board {

class Memory : public Store {
public:
    Kind kind(std::string_view path) override;
    bool exists(std::string_view path) override;
    std::optional<std::string> read(std::string_view path) override;
    bool write(std::string_view path, std::string_view text, Writing how) override;
    bool remove(std::string_view path) override;
    void make_directories(std::string_view path) override;
    bool link(std::string_view path, std::string_view target) override;
    std::vector<std::string> entries(std::string_view directory) override;
    int lock(std::string_view) override { return 0; }
    void unlock(int) override {}

    bool make_fifo(std::string_view path);
    void restore(const Memory& before);  // takes no longer than there are differences

    unsigned changes = 0;        // so far
    unsigned last_change = ~0U;  // none takes place after so many: the power is lost

private:
    struct Node {
        Kind kind;
        std::string text;  // a file's content, a link's target
        bool operator==(const Node&) const = default;
    };
    using Nodes = std::map<std::string, Node, std::less<>>;

    // The path without a link in it, but for one at its end; follow() replaces that one, too. A
    // path that changes is kept in the place.
    std::string_view resolve(std::string_view path, std::string&& place = {}) const;
    std::string_view follow(std::string_view path, std::string&& place = {}) const;
    const Node* find(std::string_view path) const;
    Node* change(std::string_view path, Kind kind);  // null: not possible

    Nodes nodes_ = {
        {"", {Kind::directory, ""}}
    };
    bool has_links_ = false;
};

}  // namespace board
