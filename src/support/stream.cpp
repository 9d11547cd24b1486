#include "support/stream.h"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace platform {
namespace {

// Keeps SIGPIPE from this thread for as long as it lives, and takes back the one that was raised.
class NoSigpipe {
public:
    NoSigpipe() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        was_pending_ = sigismember(&pending, SIGPIPE) == 1;
        sigprocmask(SIG_BLOCK, &pipe_, &before_);
    }
    ~NoSigpipe() {
        const int kept = errno;
        constexpr timespec kAtOnce = {};
        if (!was_pending_) sigtimedwait(&pipe_, nullptr, &kAtOnce);
        sigprocmask(SIG_SETMASK, &before_, nullptr);
        errno = kept;
    }
    NoSigpipe(const NoSigpipe&) = delete;
    NoSigpipe& operator=(const NoSigpipe&) = delete;

private:
    sigset_t pipe_;
    sigset_t before_;
    bool was_pending_;
};

FILE* start(const char* command, const char* mode) {
    FILE* const pipe = command != nullptr ? popen(command, mode) : nullptr;
    if (pipe != nullptr) fcntl(fileno(pipe), F_SETFD, FD_CLOEXEC);
    return pipe;
}

}  // namespace

template <int (*kClose)(FILE*)>
int Stream<kClose>::close() {
    if (stream_ == nullptr) return 0;
    const int kept = errno;
    const int result = kClose(stream_);
    stream_ = nullptr;
    errno = kept;
    return result;
}

template <int (*kClose)(FILE*)>
std::optional<std::string_view> Stream<kClose>::read_line(std::span<char> buffer) {
    if (fgets(buffer.data(), static_cast<int>(buffer.size()), stream_) == nullptr) return {};
    return std::string_view(buffer.data());
}

template <int (*kClose)(FILE*)>
bool Stream<kClose>::write(const void* bytes, size_t size) {
    const NoSigpipe guard;
    const bool written = fwrite(bytes, 1, size, stream_) == size;
    return close() == 0 && written;
}

template class Stream<fclose>;
template class Stream<pclose>;

FILE* open_for_reading(const char* path) {
    return fopen(path, "re");
}

FILE* open_for_writing(const char* path) {
    return fopen(path, "w+e");
}

FILE* open_for_appending(const char* path) {
    return fopen(path, "a+e");
}

FILE* open_command_output(const char* command) {
    return start(command, "r");
}

FILE* open_command_input(const char* command) {
    return start(command, "w");
}

void remove_file(const char* path) {
    unlink(path);
}

}  // namespace platform
