// The library's way to the kernel. These definitions take the place of the C library's: drivers of
// the board answer its requests, and its pauses are noted instead of waited for.
#include <dlfcn.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdarg>
#include <string>

#include "driver/driver.h"
#include "live/journal.h"

extern "C" {

int ioctl(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    if (const auto result = board::driver_ioctl(request, argument)) return *result;
    static const auto real =
        reinterpret_cast<int (*)(int, unsigned long, ...)>(::dlsym(RTLD_NEXT, "ioctl"));
    return real(fd, request, argument);
}

int usleep(useconds_t microseconds) {
    board::journal({"usleep", std::to_string(microseconds)});
    return 0;
}

unsigned sleep(unsigned seconds) {
    board::journal({"sleep", std::to_string(seconds)});
    return 0;
}

}  // extern "C"
