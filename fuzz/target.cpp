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

harness::Outside& outside() {
    static auto* const board = new harness::Outside;
    return *board;
}

}  // namespace fuzz_target

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    GTEST_FLAG_SET(throw_on_failure, true);  // a failed expectation ends the run as a claim does
    harness::Outside& outside = fuzz_target::outside();
    outside.restart();
    outside.index = fuzz_target::kIndex;
    fuzz_target::Pieces input({reinterpret_cast<const char*>(data), size});
    fuzz(input);
    outside.expect_all_given_back();
    return 0;
}
