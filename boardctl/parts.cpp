#include "boardctl/parts.h"

#include <system_error>

namespace boardctl {
namespace {

namespace fs = std::filesystem;

// Below the program's folder.
fs::path find_part(const char* installed, const char* built) {
    std::error_code ignored;
    const fs::path program = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    const fs::path place = program / installed;
    return fs::exists(place, ignored) ? place : program / built;
}

}  // namespace

Parts find_parts() {
    return {
        find_part(INSTALLED_LIBRARIES "/" PROJECT "/libboardhost.so",
                  "../board/host/libboardhost.so"),
        find_part(INSTALLED_LIBRARIES "/libplatform.so.1", "../libplatform.so.1"),
        {find_part(INSTALLED_DATA "/" PROJECT "/board", "../board/root"),
                                                                          find_part(INSTALLED_LIBRARIES "/" PROJECT "/board-tool", "../board/tools/board-tool")},
    };
}

}  // namespace boardctl
