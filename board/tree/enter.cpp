#include "tree/enter.h"

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

#include "live/journal.h"
#include "live/tree.h"

namespace board {
namespace {

constexpr int kBroken = 70;  // the work ended by an exception

int exit_status(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

int wait_for(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return kBroken;
    return exit_status(status);
}

int refuse(const char* step) {
    std::fprintf(stderr, "board: this machine does not let us enter the board (%s: %s)\n", step,
                 std::strerror(errno));
    return kNotAllowed;
}

bool put(const char* path, const std::string& text) {
    const int fd = ::open(path, O_WRONLY | O_CLOEXEC);
    if (fd < 0) return false;
    const bool done = ::write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(fd);
    return done;
}

// Root needs no user name space, but may lack the right to go without one.
bool leave_name_spaces() {
    constexpr int kSpaces = CLONE_NEWNS | CLONE_NEWPID;
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    if (::unshare(kSpaces) == 0) return true;
    return ::unshare(kSpaces | CLONE_NEWUSER) == 0 && put("/proc/self/setgroups", "deny") &&
           put("/proc/self/uid_map", "0 " + user + " 1") &&
           put("/proc/self/gid_map", "0 " + group + " 1");
}

bool change_root(const std::string& directory) {
    const std::string null = directory + "/dev/null";
    return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("/dev/null", null.c_str(), nullptr, MS_BIND, nullptr) == 0 &&
           ::chroot(directory.c_str()) == 0 && ::chdir("/") == 0;
}

void take_environment() {
    ::setenv("PATH", "/sbin:/usr/sbin:/bin:/usr/bin", 1);
    for (const char* name : {"LD_PRELOAD", "LD_LIBRARY_PATH", "TMPDIR"}) ::unsetenv(name);
}

[[noreturn]] void end_with(const std::function<int()>& work) {
    int status = kBroken;
    try {
        status = work();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "board: %s\n", error.what());
    }
    std::fflush(nullptr);
    ::_exit(status);
}

// Process 1 of the board: buries the dead, notes a reboot request, ends with the work.
int serve_as_init(const std::function<int()>& work) {
    sigset_t served;
    sigset_t before;
    sigemptyset(&served);
    sigaddset(&served, SIGCHLD);
    sigaddset(&served, SIGTERM);
    sigprocmask(SIG_BLOCK, &served, &before);

    const pid_t worker = ::fork();
    if (worker == 0) {
        sigprocmask(SIG_SETMASK, &before, nullptr);
        end_with(work);
    }
    for (;;) {
        int signal = 0;
        sigwait(&served, &signal);
        if (signal == SIGTERM) journal({"reboot"});
        int status = 0;
        for (pid_t dead; (dead = ::waitpid(-1, &status, WNOHANG)) > 0;)
            if (dead == worker) return exit_status(status);
    }
}

// The first process after unshare() is process 1 of the new process name space.
int run_init(const std::string& directory, const std::function<int()>& work) {
    const pid_t init = ::fork();
    if (init < 0) return refuse("fork");
    if (init > 0) return wait_for(init);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (!change_root(directory)) ::_exit(refuse("chroot"));
    set_root("");
    take_environment();
    ::_exit(serve_as_init(work));
}

}  // namespace

int enter(const std::string& directory, const std::function<int()>& work) {
    std::fflush(nullptr);
    const pid_t gate = ::fork();
    if (gate < 0) return refuse("fork");
    if (gate > 0) return wait_for(gate);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::_exit(leave_name_spaces() ? run_init(directory, work) : refuse("unshare"));
}

}  // namespace board
