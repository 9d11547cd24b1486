#include "src/support/stream.h"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdio_ext.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <type_traits>

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

// A plain file raises no signal.
struct NoGuard {};
template <int (*kClose)(FILE*)>
using Guard = std::conditional_t<kClose == pclose, NoSigpipe, NoGuard>;

FILE* open_stream(const char* path, const char* mode) {
    FILE* stream = nullptr;
    do {
        stream = fopen(path, mode);
    } while (stream == nullptr && errno == EINTR);
    // It stays with this thread: a lock at each line would only take time.
    if (stream != nullptr) __fsetlocking(stream, FSETLOCKING_BYCALLER);
    return stream;
}

FILE* start(const char* command, const char* mode) {
    FILE* const pipe = command != nullptr ? popen(command, mode) : nullptr;
    if (pipe != nullptr) fcntl(fileno(pipe), F_SETFD, FD_CLOEXEC);
    return pipe;
}

}  // namespace

template <int (*kClose)(FILE*)>
int close_stream(FILE* stream) {
    const int kept = errno;
    int result = kClose(stream);
    if (result == -1 && errno == EINTR) result = 0;
    errno = kept;
    return result;
}

template <int (*kClose)(FILE*)>
bool Stream<kClose>::interrupted() {
    if (ferror(this->get()) == 0 || errno != EINTR) return false;
    clearerr(this->get());
    return true;
}

// An interrupted fgets() leaves what it has read in the buffer, without a NUL and without saying
// how much it is. It holds no line feed, so it ends at the first one of those laid out before.
template <int (*kClose)(FILE*)>
std::optional<std::string_view> Stream<kClose>::read_line(std::span<char> buffer) {
    if (!this->ok()) return {};
    std::span<char> rest = buffer;
    do {
        memset(rest.data(), '\n', rest.size());
        if (fgets(rest.data(), static_cast<int>(rest.size()), this->get()) != nullptr)
            return std::string_view(buffer.data());
        rest = {std::find(rest.begin(), rest.end(), '\n'), rest.end()};
    } while (interrupted());
    if (failed() || rest.size() == buffer.size()) return {};
    rest[0] = '\0';  // the text ended behind an interrupted piece
    return std::string_view(buffer.data());
}

template <int (*kClose)(FILE*)>
bool Stream<kClose>::write(const void* bytes, size_t size) {
    [[maybe_unused]] const Guard<kClose> guard;
    setvbuf(this->get(), nullptr, _IONBF, 0);  // an interrupted flush would lose a buffer's content
    const char* at = static_cast<const char*>(bytes);
    size_t left = size;
    do {
        const size_t count = fwrite(at, 1, left, this->get());
        at += count;
        left -= count;
    } while (left > 0 && interrupted());
    return close() == 0 && left == 0;
}

template int close_stream<fclose>(FILE*);
template int close_stream<pclose>(FILE*);
template class Stream<fclose>;
template class Stream<pclose>;

FILE* open_for_reading(const char* path) {
    return open_stream(path, "re");
}

FILE* open_for_writing(const char* path) {
    return open_stream(path, "w+e");
}

FILE* open_for_appending(const char* path) {
    return open_stream(path, "a+e");
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
