// Diverts what libplatform.so imports, and nothing else: its slots for one symbol are pointed at a
// replacement, and back at the end of the hook's life. Calls of the same function by the host, the
// tests or the C library keep their way. A name that the library does not import is no error.
//
//   const harness::LibraryHook hook("socket", &no_socket);  // int no_socket(int, int, int)
//   const harness::LibraryHook host(HOST_HOOK(get_igmp_proxy, +[] { return 1; }));
#pragma once

#include <string_view>
#include <utility>
#include <vector>

namespace harness {

// A function of the host and a replacement of the same type; another does not compile.
#define HOST_HOOK(name, replacement) #name, static_cast < decltype(&::name)>(replacement)

class LibraryHook {
public:
    template <class T>
    LibraryHook(std::string_view name, T* replacement) {
        divert(name, reinterpret_cast<void*>(replacement));
    }
    LibraryHook(const LibraryHook&) = delete;
    LibraryHook& operator=(const LibraryHook&) = delete;
    ~LibraryHook();

private:
    void divert(std::string_view name, void* replacement);

    std::vector<std::pair<void**, void*>> originals_;
};

}  // namespace harness
