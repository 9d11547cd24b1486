#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "boardctl/call/call.h"
#include "boardctl/errors.h"
#include "boardctl/text.h"

namespace boardctl {
namespace {

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

[[noreturn]] void refuse(const std::string& path) {
    throw Missing(shown(path) + ": " + std::strerror(errno));
}

}  // namespace

Folders::Folders()
    : root_(::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC)),
      current_(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

Folders::~Folders() {
    ::close(root_);
    ::close(current_);
}

int Folders::open(const std::string& path, int flags) const {
    const bool absolute = path.starts_with('/');
    const std::string name = absolute ? "." + path : path;
    const int fd = ::openat(absolute ? root_ : current_, name.c_str(), flags, 0666);
    if (fd < 0) refuse(path);
    return fd;
}

std::string Folders::read(const std::string& path) const {
    const File file(::fdopen(open(path, O_RDONLY | O_CLOEXEC), "r"));
    std::string bytes;
    char block[4096];
    while (const size_t count = std::fread(block, 1, sizeof block, file.get()))
        bytes.append(block, count);
    if (std::ferror(file.get()) != 0) refuse(path);
    return bytes;
}

void Folders::write(const std::string& path, const std::string& bytes) const {
    File file(::fdopen(open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC), "w"));
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    if (std::fclose(file.release()) != 0 || !written) refuse(path);
}

}  // namespace boardctl
