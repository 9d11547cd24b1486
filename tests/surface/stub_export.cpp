// STUB_EXPORT=name:value empties an exported function for the run: it returns the value and does
// nothing. check_tests.py sees by it whether a test misses the function's work.
#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::vector<uint8_t> code_that_returns(uint8_t value) {
#if defined(__x86_64__)
    return {0xB8, value, 0, 0, 0, 0xC3};  // mov eax, value; ret
#elif defined(__aarch64__)
    const uint32_t words[] = {0x52800000u | uint32_t{value} << 5, 0xD65F03C0u};  // mov w0; ret
    const auto* const bytes = reinterpret_cast<const uint8_t*>(words);
    return {bytes, bytes + sizeof words};
#else
#error "no code for this processor"
#endif
}

[[gnu::constructor]] void stub_export() {
    const char* const order = std::getenv("STUB_EXPORT");
    if (order == nullptr) return;
    const std::string text = order;
    const size_t colon = text.find(':');
    auto* const function = static_cast<char*>(dlsym(RTLD_DEFAULT, text.substr(0, colon).c_str()));
    const auto code = code_that_returns(static_cast<uint8_t>(std::atoi(text.c_str() + colon + 1)));
    const auto page_size = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
    auto* const page = function - reinterpret_cast<uintptr_t>(function) % page_size;
    if (function == nullptr ||
        mprotect(page, 2 * page_size, PROT_READ | PROT_WRITE | PROT_EXEC) != 0) {
        std::fprintf(stderr, "STUB_EXPORT: cannot empty %s\n", order);
        std::_Exit(3);
    }
    std::memcpy(function, code.data(), code.size());
    __builtin___clear_cache(function, function + code.size());
}

}  // namespace
