// The library's way to the kernel. These definitions take the place of the C library's, to which
// they hand everything on a real board.
#include "boardctl/system.h"

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
    static const auto real = next<int(useconds_t)>("usleep");
    if (!has_board_drivers) return real(microseconds);
    board::journal({"usleep", std::to_string(microseconds)});
    return 0;
}

unsigned sleep(unsigned seconds) {
    static const auto real = next<unsigned(unsigned)>("sleep");
    if (!has_board_drivers) return real(seconds);
    board::journal({"sleep", std::to_string(seconds)});
    return 0;
}

}  // extern "C"
