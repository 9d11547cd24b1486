// The store in a tree of files. Inside the board that is "/" itself.
#pragma once

#include "board/store/store.h"

namespace board {

class Tree : public Store {
public:
    static std::string place(std::string_view path);  // on this machine

    Kind kind(std::string_view path) override;
    bool exists(std::string_view path) override;
    std::optional<std::string> read(std::string_view path) override;
    bool write(std::string_view path, std::string_view text, Writing how) override;
    bool remove(std::string_view path) override;
    void make_directories(std::string_view path) override;
    bool link(std::string_view path, std::string_view target) override;
    std::vector<std::string> entries(std::string_view directory) override;
    int lock(std::string_view path) override;
    void unlock(int lock) override;
};

}  // namespace board
