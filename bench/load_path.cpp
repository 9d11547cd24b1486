// Loading the library, beside loading a library of nothing that was built with the same options.
#include <dlfcn.h>

#include "bench/path.h"
#include "bench/system.h"

namespace bench {
namespace {

void load(const char* path) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr || dlclose(library) != 0) give_up(path);
}

// This program has the library already; a copy of it is another one.
constexpr const char* kCopy = "/libplatform.so";

}  // namespace

void add_load_path(std::vector<Path>& paths) {
    Path& path = paths.emplace_back();
    path.name = "load and unload";
    path.unit = "library";
    path.sizes = {1};
    path.prepare = [](int) { run_shell("cp " PLATFORM_LIBRARY " " + in_tree(kCopy)); };
    path.library = [] { load(in_tree(kCopy).c_str()); };
    path.limit = [] { load(EMPTY_LIBRARY); };
}

}  // namespace bench
