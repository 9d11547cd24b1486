// The library's way to the kernel. These definitions take the place of the C library's, to which
// they hand everything on a real board.
#include "boardctl/program/system.h"

#include <dlfcn.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdarg>
#include <string>

#include "board/driver/driver.h"
#include "board/store/journal.h"
#include "src/host/host.h"

namespace {

bool has_board_drivers = false;

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

template <class Result>
Result pause(const char* name, unsigned time) {
    if (!has_board_drivers) return next<Result(unsigned)>(name)(time);
    board::journal({name, std::to_string(time)});
    return 0;
}

}  // namespace

namespace boardctl {

void use_board_drivers() {
    has_board_drivers = true;
}

}  // namespace boardctl

extern "C" {

// The board's wireless driver asks the host, which is loaded and not linked.
int iwconfig_client_get_channel(const char* ifname, channel_spec* spec) {
    static const auto host = reinterpret_cast<decltype(&iwconfig_client_get_channel)>(
        ::dlsym(RTLD_DEFAULT, "iwconfig_client_get_channel"));
    return host == nullptr ? -1 : host(ifname, spec);
}

int ioctl(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    if (has_board_drivers)
        if (const auto result = board::driver_ioctl(request, argument)) return *result;
    static const auto real = next<int(int, unsigned long, ...)>("ioctl");
    return real(fd, request, argument);
}

int usleep(useconds_t microseconds) {
    return pause<int>("usleep", microseconds);
}

unsigned sleep(unsigned seconds) {
    return pause<unsigned>("sleep", seconds);
}

}  // extern "C"
