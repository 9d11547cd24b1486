#include "src/driver/answer.h"

#include <sys/stat.h>

namespace platform {
namespace {

// Whether something other than a file has the path; a link has it, wherever it leads.
bool is_blocked(const char* path) {
    struct stat entry;
    return lstat(path, &entry) == 0 && !S_ISREG(entry.st_mode);
}

}  // namespace

bool run_driver_query(const AnyCommand& command, const char* path) {
    if (command.text() == nullptr) return false;
    if (is_blocked(path)) remove_file(path);
    if (is_blocked(path)) return false;
    run_shell(command);
    return !is_blocked(path);
}

File driver_answer(std::string_view ifname, const AnyCommand& command, const Text& path) {
    if (ifname.find('/') != std::string_view::npos || !path.ok()) return File(nullptr);
    const bool ran = run_driver_query(command, path.c_str());
    return File(ran ? open_for_reading(path.c_str()) : nullptr);
}

}  // namespace platform
