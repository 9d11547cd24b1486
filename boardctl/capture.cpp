#include "boardctl/capture.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace boardctl {
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

void Capture::end() {
    std::fflush(nullptr);
    progress("");
    restore(STDOUT_FILENO, stdout_);
    restore(STDERR_FILENO, stderr_);
}

std::string Capture::take() {
    std::fflush(nullptr);
    std::string text;
    char buffer[4096];
    ::lseek(file_, 0, SEEK_SET);
    for (ssize_t size; (size = ::read(file_, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<size_t>(size));
    (void)!::ftruncate(file_, 0);
    ::lseek(file_, 0, SEEK_SET);
    return text;
}

void Capture::put_back(const std::string& text) {
    (void)!::write(file_, text.data(), text.size());
}

void Capture::progress(const std::string& text) {
    const int terminal = stderr_ == -1 ? STDERR_FILENO : stderr_;
    if (::isatty(terminal) == 0 || (text.empty() && !has_progress_)) return;
    const std::string line = "\r\033[K" + text;
    (void)!::write(terminal, line.data(), line.size());
    has_progress_ = !text.empty();
}

}  // namespace boardctl
