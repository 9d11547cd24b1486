// The memory that a process pays for the library alone.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

constexpr size_t kMostDirty = 16;  // KiB

// Private copies of the library's pages, in KiB: those relocated and those written to. They are its
// Private_Dirty without the file's own pages that a linker has only just written. All are pages of
// the file: the surface test sees to it that the zeroed objects fit into its last one.
size_t dirty_kib() {
    std::ifstream smaps("/proc/self/smaps");
    size_t sum = 0;
    bool ours = false;
    for (std::string line; std::getline(smaps, line);) {
        std::istringstream words(line);
        std::string key;
        words >> key;
        if (key.back() != ':') {
            ours = line.find("libplatform.so") != std::string::npos;
        } else if (ours && key == "Anonymous:") {
            size_t size = 0;
            words >> size;
            sum += size;
        }
    }
    return sum;
}

TEST(Library, DirtiesFewPagesOfItsOwn) {
    ASSERT_EQ(0U, dirty_kib());
    void* const library = dlopen(PLATFORM_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(nullptr, library) << dlerror();
    const size_t dirty = dirty_kib();
    std::printf("%zu KiB private and dirty after load\n", dirty);
    EXPECT_GT(dirty, 0U);  // relocations alone write a page
    EXPECT_LE(dirty, kMostDirty);
    EXPECT_EQ(0, dlclose(library));
}

}  // namespace
