#include "src/support/descriptor.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace platform {
namespace {

// Calls until no signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

ssize_t read_some(int descriptor, void* buffer, size_t size) {
    return uninterrupted([=] { return read(descriptor, buffer, size); });
}

}  // namespace

void close_descriptor(int descriptor) {
    const int kept = errno;
    close(descriptor);
    errno = kept;
}

ssize_t Descriptor::read_at(off_t offset, void* buffer, size_t size) const {
    if (offset < 0) return -1;
    // An MTD device refuses to go past its end, where there is nothing to read.
    if (lseek(get(), offset, SEEK_SET) == -1) return errno == EINVAL ? 0 : -1;
    return read_some(get(), buffer, size);
}

off_t Descriptor::size() const {
    const off_t end = lseek(get(), 0, SEEK_END);
    return lseek(get(), 0, SEEK_SET) == 0 ? end : -1;
}

ssize_t Descriptor::read_all(void* buffer, size_t size) const {
    size_t done = 0;
    while (done < size) {
        const ssize_t count = read_some(get(), static_cast<char*>(buffer) + done, size - done);
        if (count < 0) return -1;
        if (count == 0) break;
        done += static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

int open_file(const char* path, int flags) {
    return uninterrupted([=] { return open(path, flags | O_CLOEXEC, 0600); });
}

int open_control_socket() {
    const int descriptor = socket(AF_INET, SOCK_DGRAM, 0);
    if (descriptor != -1) fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    return descriptor;
}

int control(int descriptor, unsigned long request, void* record) {
    return uninterrupted([=] { return ioctl(descriptor, request, record); });
}

}  // namespace platform
