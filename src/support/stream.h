// Owned streams, read line by line.
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
    ~Stream();

    bool ok() const { return stream_ != nullptr; }

    // One line of at most buffer.size() - 1 characters, its line feed included; a longer line
    // comes in pieces. Nothing at the end of the text. The line ends at a NUL within it.
    std::optional<std::string_view> read_line(std::span<char> buffer);

private:
    FILE* stream_;
};

using File = Stream<fclose>;
using Pipe = Stream<pclose>;

// Both close on exec: commands that are started later must not inherit them.
FILE* open_for_reading(const char* path);
FILE* open_command_output(const char* command);  // null command: a null stream

}  // namespace platform
