#include "board/tree/enter.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>

#include "board/store/journal.h"
#include "board/store/store.h"
#include "board/tree/held_signals.h"

namespace board {
namespace {

constexpr int kBroken = 70;  // the work ended by an exception

// What the kernel can refuse on the way, and what whoever runs the machine can do about it.
struct Call {
    const char* name;
    const char* remedy;
};
constexpr const char* kAllowNameSpaces =
    "outside a chroot allow user name spaces (sysctl user.max_user_namespaces, "
    "kernel.unprivileged_userns_clone, kernel.apparmor_restrict_unprivileged_userns), or run as "
    "root with CAP_SYS_ADMIN";
constexpr Call kFork = {"fork", "raise ulimit -u and sysctl user.max_pid_namespaces"};
constexpr Call kUnshareUser = {"unshare(CLONE_NEWUSER)", kAllowNameSpaces};
constexpr Call kUnshare = {"unshare(CLONE_NEWNS | CLONE_NEWPID)", kAllowNameSpaces};
constexpr Call kFindMap = {"open(/proc/self/uid_map)", "mount /proc, or run as root"};
constexpr Call kWriteMap = {"write(/proc/PID/uid_map)", kAllowNameSpaces};
constexpr Call kMount = {"mount(/dev/null)",
                         "in a chroot, make its folder a mount point: mount --bind DIR DIR"};
constexpr Call kChroot = {"chroot", "name another folder for the board"};

int refuse(const Call& call, int error = errno) {
    std::fprintf(stderr, "board: cannot enter the board: %s: %s; %s\n", call.name,
                 std::strerror(error), call.remedy);
    return kNotAllowed;
}

bool put(const std::string& path, const std::string& text) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (fd < 0) return false;
    const bool done = ::write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(fd);
    return done;
}

// Every id of this name space as itself: root keeps its rights over everybody's files. Only root,
// and only from outside, may give more than its own id.
std::string every_id(const char* map_path) {
    std::ifstream map(map_path);
    std::string lines;
    for (std::string first, outside, count; map >> first >> outside >> count;)
        lines += first + ' ' + first + ' ' + count + '\n';
    return lines;
}

bool map_ids(const std::string& process, const char* file, unsigned own) {
    const std::string place = process + file;
    if (::geteuid() == 0 && put(place, every_id((std::string("/proc/self/") + file).c_str())))
        return true;
    return put(place, "0 " + std::to_string(own) + " 1");
}

// The caller's and the gate's ends of what they say about the name space of users.
struct Talk {
    int caller = -1;
    int gate = -1;
};

// The gate asks for ids once it has a user name space, or closes its end without one.
void answer_gate(const Talk& talk, pid_t gate) {
    char byte = 0;
    ::close(talk.gate);
    if (::read(talk.caller, &byte, 1) == 1) {
        const std::string process = "/proc/" + std::to_string(gate) + '/';
        const bool done = put(process + "setgroups", "deny") &&
                          map_ids(process, "uid_map", ::geteuid()) &&
                          map_ids(process, "gid_map", ::getegid());
        byte = static_cast<char>(done ? 0 : errno);
        (void)!::send(talk.caller, &byte, 1, MSG_NOSIGNAL);
    }
    ::close(talk.caller);
}

int ask_for_ids(const Talk& talk) {
    char byte = 0;
    const bool asked = ::send(talk.gate, &byte, 1, MSG_NOSIGNAL) == 1;
    return asked && ::read(talk.gate, &byte, 1) == 1 ? byte : EIO;
}

// A user name space is more careful also with root's rights. Root can go without one.
int leave_name_spaces(const Talk& talk) {
    constexpr int kSpaces = CLONE_NEWNS | CLONE_NEWPID;
    const bool has_map = ::access("/proc/self/uid_map", F_OK) == 0;
    if (has_map && ::unshare(kSpaces | CLONE_NEWUSER) == 0) {
        const int error = ask_for_ids(talk);
        return error == 0 ? 0 : refuse(kWriteMap, error);
    }
    const int error = errno;
    if (::unshare(kSpaces) == 0) return 0;
    if (::geteuid() == 0) return refuse(kUnshare);
    return refuse(has_map ? kUnshareUser : kFindMap, error);
}

bool is_usable(const std::string& device) {
    const int fd = ::open(device.c_str(), O_RDWR | O_CLOEXEC);
    ::close(fd);
    return fd >= 0;
}

// The machine's own null, mounted where nobody else sees it. In a plain chroot "/" is no mount
// point and cannot be made private; there root makes a device in its place.
bool give_null(const std::string& directory) {
    const std::string null = directory + "/dev/null";
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
        ::mount("/dev/null", null.c_str(), nullptr, MS_BIND, nullptr) == 0)
        return true;
    const int error = errno;
    const std::string device = null + ".new";
    ::unlink(device.c_str());
    const bool made = ::mknod(device.c_str(), S_IFCHR | 0666, makedev(1, 3)) == 0 &&
                      is_usable(device) && ::rename(device.c_str(), null.c_str()) == 0;
    errno = error;
    return made;
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
int serve_as_init(const HeldSignals& signals, const std::function<int()>& work) {
    const pid_t worker = ::fork();
    if (worker < 0) return refuse(kFork);
    if (worker == 0) {
        signals.release();
        end_with(work);
    }
    for (;;) {
        if (signals.take() == SIGTERM) journal({"reboot"});
        int status = 0;
        for (pid_t dead; (dead = ::waitpid(-1, &status, WNOHANG)) > 0;)
            if (dead == worker) return exit_status(status);
    }
}

// The first process after unshare() is process 1 of the new process name space: with its end, all
// of the board's processes end.
int run_init(const HeldSignals& signals, const std::string& directory,
             const std::function<int()>& work) {
    const pid_t init = ::fork();
    if (init < 0) return refuse(kFork);
    if (init > 0) return signals.wait_for(init, SIGKILL);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (!give_null(directory)) ::_exit(refuse(kMount));
    if (::chroot(directory.c_str()) != 0 || ::chdir("/") != 0) ::_exit(refuse(kChroot));
    set_root("");
    take_environment();
    ::_exit(serve_as_init(signals, work));
}

}  // namespace

int enter(const std::string& directory, const std::function<int()>& work) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return refuse(kFork);
    const Talk talk{ends[0], ends[1]};
    std::fflush(nullptr);
    const HeldSignals signals;
    const pid_t caller = ::getpid();
    const pid_t gate = ::fork();
    if (gate < 0) return refuse(kFork);
    if (gate > 0) {
        answer_gate(talk, gate);
        return signals.wait_for(gate, SIGTERM);
    }
    // It ends the board when the caller cannot: a caller that was killed has the gate interrupted.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    ::close(talk.caller);
    if (::getppid() != caller) ::_exit(kBroken);
    const int status = leave_name_spaces(talk);
    ::close(talk.gate);
    ::_exit(status == 0 ? run_init(signals, directory, work) : status);
}

}  // namespace board
