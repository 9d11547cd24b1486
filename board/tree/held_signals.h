// Waiting for a child that must not outlive an interruption.
#pragma once

#include <signal.h>
#include <sys/types.h>

namespace board {

// Holds SIGINT, SIGTERM and SIGCHLD back while it lives, so that none is lost before a wait.
class HeldSignals {
public:
    HeldSignals();
    ~HeldSignals() { release(); }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    // As they were before: for a child that does the work.
    void release() const;

    // Returns the next one.
    int take() const;

    // Waits for the child's end and returns its status, 128 and the signal after one. SIGINT or
    // SIGTERM sends `ending` to the child, waits on, and makes the result 128 and that signal.
    int wait_for(pid_t child, int ending) const;

private:
    sigset_t held_;
    sigset_t before_;
};

int exit_status(int wait_status);

}  // namespace board
