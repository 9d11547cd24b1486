// Owned descriptors: sockets for ioctls, devices and files read in blocks. What a signal interrupts
// goes on.
#pragma once

#include <stddef.h>
#include <sys/types.h>

namespace platform {

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : descriptor_(other.release()) {}
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(); }

    bool ok() const { return descriptor_ != -1; }
    int get() const { return descriptor_; }
    [[nodiscard]] int release() {
        const int descriptor = descriptor_;
        descriptor_ = -1;
        return descriptor;
    }

    // One read at an offset from the start, 0 past the end; -1 when it fails.
    ssize_t read_at(off_t offset, void* buffer, size_t size) const;

    // How many bytes the file or device holds; -1 for what has no size, such as a pipe. Reading
    // then begins at the start.
    off_t size() const;

    // Reads on until the end or until the buffer is full; -1 when a read fails.
    ssize_t read_all(void* buffer, size_t size) const;

private:
    void reset();  // keeps errno

    int descriptor_ = -1;
};

// All are closed on exec: commands that are started later must not inherit them. -1 when there is
// no such file or no socket.
int open_file(const char* path, int flags);
int open_control_socket();  // for ioctls

// An ioctl: -1 when it is refused.
int control(int descriptor, unsigned long request, void* record);

}  // namespace platform
