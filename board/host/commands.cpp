// Commands, the system log and named locks.
#include <sys/wait.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "board/store/journal.h"
#include "board/store/store.h"
#include "src/host/host.h"

namespace {

[[gnu::format(printf, 1, 0)]] std::string formatted(const char* format, va_list arguments) {
    char* text = nullptr;
    if (vasprintf(&text, format, arguments) < 0) return {};
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    return text;
}

// As a shell reports it: the exit status, or 128 and the signal.
int run(const std::string& command) {
    const int status = std::system(command.c_str());
    if (status == -1) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// Locks also hold between processes that share a tree.
struct HeldLock {
    int handle = -1;
    std::string name;
};

HeldLock& held_lock() {
    static auto* const lock = new HeldLock;
    return *lock;
}

}  // namespace

extern "C" {

int system2(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string command = formatted(format, arguments);
    va_end(arguments);
    return run(command);
}

int system3(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string command = formatted(format, arguments);
    va_end(arguments);
    return run(command);
}

void syslog_msg(int level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    board::journal({"syslog", std::to_string(level), formatted(format, arguments)});
    va_end(arguments);
}

// The board takes one lock at a time: a second one would wait for ever, so it is an error here.
intptr_t lock_file(const char* name) {
    HeldLock& held = held_lock();
    if (held.handle >= 0) {
        board::journal({"error:", "lock", name, "while", held.name, "is", "held"});
        return -1;
    }
    board::journal({"lock", name});
    held = {board::store().lock(board::live_path("lock." + std::string(name))), name};
    return held.handle;
}

int unlock_file(intptr_t handle) {
    HeldLock& held = held_lock();
    if (handle < 0 || handle != held.handle) {
        board::journal({"error:", "unlock", std::to_string(handle)});
        return -1;
    }
    board::journal({"unlock", held.name});
    board::store().unlock(held.handle);
    held = {};
    return 0;
}

}  // extern "C"
