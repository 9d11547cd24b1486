// The command line: what was asked for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "boardctl/verb.h"

namespace boardctl {

struct Request {
    const Verb* verb = nullptr;
    Arguments arguments{{}};
    std::string board;  // empty: the usual place
    std::string host_library;
    std::string platform_library;
    bool json = false;
    bool verbose = false;

    bool is_virtual() const { return host_library.empty(); }
};

// Nothing when the call ends here, well and with its text printed. Throws UsageError.
std::optional<Request> parse(const Verbs& verbs, int argc, char** argv);

}  // namespace boardctl
