// How a call ends: exit statuses that scripts can tell apart, and the exceptions that lead there.
#pragma once

#include <stdexcept>
#include <string>

namespace boardctl {

enum ExitStatus {
    kGood = 0,
    kFailed = 1,       // the board answered with a failure
    kUsage = 2,        // wrong command line or configuration
    kMissing = 3,      // a library or the board is not there
    kNotAllowed = 77,  // the machine does not let us enter the virtual board
};

struct Fault : std::runtime_error {
    Fault(const std::string& text, ExitStatus its_status)
        : runtime_error(text), status(its_status) {}
    const ExitStatus status;
};

template <ExitStatus kStatus>
struct FaultOf : Fault {
    explicit FaultOf(const std::string& text) : Fault(text, kStatus) {}
};
using Failed = FaultOf<kFailed>;
using UsageError = FaultOf<kUsage>;
using Missing = FaultOf<kMissing>;

}  // namespace boardctl
