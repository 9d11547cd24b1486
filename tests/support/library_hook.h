// Diverts what libplatform.so imports, and nothing else: its slots for one symbol are pointed at a
// replacement, and back at the end of the hook's life. Calls of the same function by the host, the
// tests or the C library keep their way.
//
//   harness::LibraryHook hook("socket", &no_socket);  // int no_socket(int, int, int)
//
// A name that the library does not import is no error: the hook then does nothing.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace harness {

class LibraryHook {
public:
    template <class T>
    LibraryHook(std::string_view name, T* replacement)
        : LibraryHook(name, reinterpret_cast<void*>(replacement), nullptr) {}
    LibraryHook(const LibraryHook&) = delete;
    LibraryHook& operator=(const LibraryHook&) = delete;
    ~LibraryHook();

private:
    LibraryHook(std::string_view name, void* replacement, std::nullptr_t);

    struct Diverted {
        void** slot;
        void* original;
    };
    std::vector<Diverted> diverted_;
};

// Everything that the library imports, from the host and from the C library.
std::vector<std::string_view> library_imports();

}  // namespace harness
