// Running on the board: its tree is "/", its process 1 is its own.
#pragma once

#include <functional>
#include <string>

namespace board {

inline constexpr int kNotAllowed = 77;  // test runners read this exit status as "skipped"

// Does the work in a process on the board and returns its exit status. This is a chroot in name
// spaces of its own, one of users among them; root can do without that one. Where this machine
// allows neither, the result is kNotAllowed, after a line on standard error that names the call
// that failed and the remedy. The caller stays outside. SIGINT and SIGTERM to the caller, and its
// death, end all of the board's processes; after a signal the result is 128 and the signal.
int enter(const std::string& directory, const std::function<int()>& work);

}  // namespace board
