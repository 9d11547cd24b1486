#include "run/capture.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>

namespace board::run {
namespace {

int saved(int fd) {
    return ::fcntl(fd, F_DUPFD_CLOEXEC, 3);
}

void restore(int fd, int& copy) {
    ::dup2(copy, fd);
    ::close(copy);
    copy = -1;
}

}  // namespace

Capture::Capture() : file_(::memfd_create("captured output", MFD_CLOEXEC)) {}

Capture::~Capture() {
    ::close(file_);
}

void Capture::begin() {
    std::fflush(nullptr);
    stdout_ = saved(STDOUT_FILENO);
    stderr_ = saved(STDERR_FILENO);
    ::dup2(file_, STDOUT_FILENO);
    ::dup2(file_, STDERR_FILENO);
    // Keeps our lines and those of our commands in the order in which they were printed.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
}

std::string Capture::end() {
    std::fflush(nullptr);
    restore(STDOUT_FILENO, stdout_);
    restore(STDERR_FILENO, stderr_);
    return take();
}

std::string Capture::take() {
    std::string text;
    char buffer[4096];
    ::lseek(file_, 0, SEEK_SET);
    for (ssize_t size; (size = ::read(file_, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<size_t>(size));
    (void)!::ftruncate(file_, 0);
    ::lseek(file_, 0, SEEK_SET);
    return text;
}

}  // namespace board::run
