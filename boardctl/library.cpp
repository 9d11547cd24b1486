#include "boardctl/library.h"

#include <dlfcn.h>

#include <filesystem>

#include "boardctl/errors.h"

namespace boardctl {
namespace {

// Never closed: the library's functions may run until the process ends.
void* load(const std::string& path, int flags) {
    void* const handle = ::dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | flags);
    if (handle == nullptr) throw Missing(::dlerror());
    return handle;
}

}  // namespace

Library::Library(const std::string& host_path, const std::string& platform_path)
    : host_(load(host_path, RTLD_GLOBAL)), platform_(load(platform_path, RTLD_LOCAL)) {}

void* Library::find_if_any(Part part, const char* name) const {
    return ::dlsym(part == Part::host ? host_ : platform_, name);
}

void* Library::find(Part part, const char* name) const {
    void* const place = find_if_any(part, name);
    const std::string owner = part == Part::host ? "the host" : "the platform";
    if (place == nullptr) throw Missing(owner + " library has no " + name);
    return place;
}

}  // namespace boardctl
