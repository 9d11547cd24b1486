#include "boardctl/program/parts.h"

#include <sys/auxv.h>

#include <system_error>

namespace boardctl {
namespace {

namespace fs = std::filesystem;

// Installed, it lies beside the program's folder; built, below the folder of the build.
fs::path find_part(const char* installed, const char* built) {
    std::error_code ignored;
    fs::path self = fs::read_symlink("/proc/self/exe", ignored);
    if (self.empty())  // no /proc is mounted
        self = fs::canonical(reinterpret_cast<const char*>(::getauxval(AT_EXECFN)), ignored);
    const fs::path program = self.parent_path();
    const fs::path place = program / installed;
    return fs::exists(place, ignored) ? place : program.parent_path() / built;
}

}  // namespace

const char* version() {
    return VERSION;
}

Parts find_parts() {
    Parts parts;
    parts.host_library =
        find_part(INSTALLED_LIBRARIES "/" PROJECT "/libboardhost.so", "board/host/libboardhost.so");
    parts.platform_library = find_part(INSTALLED_LIBRARIES "/libplatform.so.1", "libplatform.so.1");
    parts.tree.image = find_part(INSTALLED_DATA "/" PROJECT "/board", "board/root");
    parts.tree.tool =
        find_part(INSTALLED_LIBRARIES "/" PROJECT "/board-tool", "board/tools/board-tool");
    return parts;
}

}  // namespace boardctl
