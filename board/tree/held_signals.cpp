#include "board/tree/held_signals.h"

#include <sys/wait.h>

#include <initializer_list>

namespace board {

HeldSignals::HeldSignals() {
    ::signal(SIGCHLD, SIG_DFL);  // ignored, as some callers leave it, no child's end is reported
    sigemptyset(&held_);
    for (const int signal : {SIGCHLD, SIGINT, SIGTERM}) sigaddset(&held_, signal);
    sigprocmask(SIG_BLOCK, &held_, &before_);
}

void HeldSignals::release() const {
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

int HeldSignals::take() const {
    int signal = 0;
    sigwait(&held_, &signal);
    return signal;
}

int HeldSignals::wait_for(pid_t child, int ending) const {
    int interruption = 0;
    for (;;) {
        const int signal = take();
        if (signal != SIGCHLD) {
            interruption = signal;
            ::kill(child, ending);
        }
        int status = 0;
        if (::waitpid(child, &status, WNOHANG) == child)
            return interruption != 0 ? 128 + interruption : exit_status(status);
    }
}

int exit_status(int wait_status) {
    return WIFEXITED(wait_status) ? WEXITSTATUS(wait_status) : 128 + WTERMSIG(wait_status);
}

}  // namespace board
