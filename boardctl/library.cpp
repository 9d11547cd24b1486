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

void* require(void* handle, const char* name, const char* owner) {
    void* const place = ::dlsym(handle, name);
    if (place == nullptr) throw Missing(std::string(owner) + " library has no " + name);
    return place;
}

}  // namespace

Library::Library(const std::string& host_path, const std::string& platform_path)
    : host_(load(host_path, RTLD_GLOBAL)), platform_(load(platform_path, RTLD_LOCAL)) {}

void* Library::find(const char* name) const {
    return require(platform_, name, "the platform");
}

void* Library::find_host(const char* name) const {
    return require(host_, name, "the host");
}

void* Library::find_host_if_any(const char* name) const {
    return ::dlsym(host_, name);
}

}  // namespace boardctl
