// Owned streams, read line by line. A signal whose handler lets system calls fail with EINTR costs
// neither text nor bytes.
#pragma once

#include <stdio.h>

#include <optional>
#include <span>
#include <string_view>

#include "src/support/unique.h"

namespace platform {

// Closes; 0 also when a signal interrupts it, as it is closed all the same. Keeps errno.
template <int (*kClose)(FILE*)>
int close_stream(FILE* stream);

template <int (*kClose)(FILE*)>
class Stream : public Unique<FILE*, nullptr, close_stream<kClose>> {
public:
    using Stream::Unique::Unique;

    // One line of at most buffer.size() - 1 characters, its line feed included; a longer line
    // comes in pieces. Nothing at the end of the text, of a null stream and when reading fails.
    // The line ends at a NUL within it; the bytes behind it are of no use.
    std::optional<std::string_view> read_line(std::span<char> buffer);

    // Tells a text that could not be opened or read from one that has ended.
    bool failed() const { return !this->ok() || ferror(this->get()) != 0; }

    // Writes all bytes through to the other end and closes. False when they did not get there; a
    // reader that has gone away does not raise SIGPIPE.
    bool write(const void* bytes, size_t size);

    // Ahead of the end of the scope.
    int close() { return this->ok() ? close_stream<kClose>(this->release()) : 0; }

private:
    bool interrupted();  // the last call, by a signal; it can then go on
};

using File = Stream<fclose>;
using Pipe = Stream<pclose>;

// All close on exec: commands that are started later must not inherit them. A null command gives
// a null stream.
FILE* open_for_reading(const char* path);
FILE* open_for_writing(const char* path);    // created or emptied
FILE* open_for_appending(const char* path);  // created or kept as it is
FILE* open_command_output(const char* command);
FILE* open_command_input(const char* command);

// Removes a file; one that is gone already is fine.
void remove_file(const char* path);

}  // namespace platform
