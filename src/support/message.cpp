#include "src/support/message.h"

#include <stdarg.h>
#include <stdio.h>

namespace platform {

void print_out(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    vfprintf(stdout, format, arguments);
    va_end(arguments);
}

void print_error(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    vfprintf(stderr, format, arguments);
    va_end(arguments);
}

}  // namespace platform
