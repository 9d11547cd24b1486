// Owned descriptors: sockets for ioctls, devices and files read in blocks. What a signal interrupts
// goes on.
#pragma once

#include <stddef.h>
#include <sys/types.h>

#include "src/support/unique.h"

namespace platform {

void close_descriptor(int descriptor);  // keeps errno

class Descriptor : public Unique<int, -1, close_descriptor> {
public:
    using Unique::Unique;

    // One read at an offset from the start, 0 past the end; -1 when it fails.
    ssize_t read_at(off_t offset, void* buffer, size_t size) const;

    // How many bytes the file or device holds; -1 for what has no size, such as a pipe. Reading
    // then begins at the start.
    off_t size() const;

    // Reads on until the end or until the buffer is full; -1 when a read fails.
    ssize_t read_all(void* buffer, size_t size) const;
};

// All are closed on exec: commands that are started later must not inherit them. -1 when there is
// no such file or no socket.
int open_file(const char* path, int flags);
int open_control_socket();  // for ioctls

// An ioctl: -1 when it is refused.
int control(int descriptor, unsigned long request, void* record);

}  // namespace platform
