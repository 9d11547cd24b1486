// Commands, the system log and named locks.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

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

// A handle is the descriptor of the lock's file, so that locks also hold between processes.
struct HeldLock {
    int fd = -1;
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
    if (held.fd >= 0) {
        board::journal({"error:", "lock", name, "while", held.name, "is", "held"});
        return -1;
    }
    board::journal({"lock", name});
    const std::string place = board::in_tree(board::live_path("lock." + std::string(name)));
    held = {::open(place.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644), name};
    if (held.fd >= 0) ::flock(held.fd, LOCK_EX);
    return held.fd;
}

int unlock_file(intptr_t handle) {
    HeldLock& held = held_lock();
    if (handle < 0 || handle != held.fd) {
        board::journal({"error:", "unlock", std::to_string(handle)});
        return -1;
    }
    board::journal({"unlock", held.name});
    ::close(held.fd);
    held = {};
    return 0;
}

}  // extern "C"
