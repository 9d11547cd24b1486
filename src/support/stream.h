// Owned streams, read line by line. A signal whose handler lets system calls fail with EINTR costs
// neither text nor bytes.
#pragma once

#include <stdio.h>

#include <optional>
#include <span>
#include <string_view>

namespace platform {

// Owns a stream; closing keeps errno.
template <int (*kClose)(FILE*)>
class Stream {
public:
    explicit Stream(FILE* stream) : stream_(stream) {}
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    ~Stream() { close(); }

    bool ok() const { return stream_ != nullptr; }

    // One line of at most buffer.size() - 1 characters, its line feed included; a longer line
    // comes in pieces. Nothing at the end of the text, of a null stream and when reading fails.
    // The line ends at a NUL within it; the bytes behind it are of no use.
    std::optional<std::string_view> read_line(std::span<char> buffer);

    // Tells a text that could not be opened or read from one that has ended.
    bool failed() const { return stream_ == nullptr || ferror(stream_) != 0; }

    // Writes all bytes through to the other end and closes. False when they did not get there; a
    // reader that has gone away does not raise SIGPIPE.
    bool write(const void* bytes, size_t size);

    int close();  // ahead of the end of the scope

private:
    bool interrupted();  // the last call, by a signal; it can then go on

    FILE* stream_;
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
