#include "support/stream.h"

#include <errno.h>
#include <fcntl.h>

namespace platform {

template <int (*kClose)(FILE*)>
Stream<kClose>::~Stream() {
    if (stream_ == nullptr) return;
    const int kept = errno;
    kClose(stream_);
    errno = kept;
}

template <int (*kClose)(FILE*)>
std::optional<std::string_view> Stream<kClose>::read_line(std::span<char> buffer) {
    if (fgets(buffer.data(), static_cast<int>(buffer.size()), stream_) == nullptr) return {};
    return std::string_view(buffer.data());
}

template class Stream<fclose>;
template class Stream<pclose>;

FILE* open_for_reading(const char* path) {
    return fopen(path, "re");
}

FILE* open_command_output(const char* command) {
    FILE* pipe = command != nullptr ? popen(command, "r") : nullptr;
    if (pipe != nullptr) fcntl(fileno(pipe), F_SETFD, FD_CLOEXEC);
    return pipe;
}

}  // namespace platform
