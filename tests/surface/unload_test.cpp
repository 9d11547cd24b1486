// In a program that carries the host's library and loads ours by itself.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "platform/frame.h"

namespace {

constexpr const char* kLibrary = PLATFORM_LIBRARY;

bool is_mapped() {
    std::ostringstream maps;
    maps << std::ifstream("/proc/self/maps").rdbuf();
    return maps.str().find("libplatform.so") != std::string::npos;
}

TEST(Library, IsGoneOnceItIsUnloaded) {
    for (int round = 0; round < 2; ++round) {
        ASSERT_FALSE(is_mapped());
        void* const library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(nullptr, library) << dlerror();
        EXPECT_TRUE(is_mapped());
        const auto get_drv =
            reinterpret_cast<decltype(&platform_get_drv)>(dlsym(library, "platform_get_drv"));
        ASSERT_NE(nullptr, get_drv);
        EXPECT_EQ(dlsym(library, "platform_drv"), get_drv());

        EXPECT_EQ(0, dlclose(library));
        EXPECT_EQ(nullptr, dlopen(kLibrary, RTLD_NOW | RTLD_NOLOAD));
        EXPECT_FALSE(is_mapped());
    }
}

}  // namespace
