// How a call ends: exit statuses that scripts can tell apart, and the exceptions that lead there.
#pragma once

#include <stdexcept>

namespace boardctl {

enum ExitStatus {
    kGood = 0,
    kFailed = 1,       // the board answered with a failure
    kUsage = 2,        // wrong command line or configuration
    kMissing = 3,      // a library or the board is not there
    kNotAllowed = 77,  // the machine does not let us enter the virtual board
};

struct Failed : std::runtime_error {
    using runtime_error::runtime_error;
};
struct UsageError : std::runtime_error {
    using runtime_error::runtime_error;
};
struct Missing : std::runtime_error {
    using runtime_error::runtime_error;
};

}  // namespace boardctl
