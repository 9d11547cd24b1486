#include "fuzz/target.h"

namespace fuzz_target {

void broken(const char* claim, int line) {
    std::fprintf(stderr, "broken claim in line %d: %s\n", line, claim);
    std::abort();
}

std::string_view Pieces::next() {
    constexpr std::string_view kSeparator = "%%\n";
    const size_t end = rest_.find(kSeparator);
    const std::string_view piece = rest_.substr(0, end);
    rest_.remove_prefix(end == rest_.npos ? rest_.size() : end + kSeparator.size());
    return piece;
}

harness::MemoryBoard& outside() {
    static auto* const memory = new harness::MemoryBoard;
    return *memory;
}

}  // namespace fuzz_target

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    harness::MemoryBoard& memory = fuzz_target::outside();
    memory.index = fuzz_target::kIndex;
    memory.text.clear();
    memory.device.clear();
    memory.essid.clear();
    memory.commands.clear();
    memory.profiles.clear();
    fuzz_target::Pieces input({reinterpret_cast<const char*>(data), size});
    fuzz(input);
    CLAIM(memory.open_handles() == 0);
    return 0;
}
