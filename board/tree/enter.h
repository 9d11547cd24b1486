// Running on the board: its tree is "/", its process 1 is its own.
#pragma once

#include <functional>
#include <string>

namespace board {

inline constexpr int kNotAllowed = 77;  // test runners read this exit status as "skipped"

// Does the work in a process on the board and returns its exit status. As root this is a chroot
// in name spaces of its own; a user gets a user name space too. Where this machine allows
// neither, the result is kNotAllowed, after one line on standard error. The caller stays outside.
int enter(const std::string& directory, const std::function<int()>& work);

}  // namespace board
