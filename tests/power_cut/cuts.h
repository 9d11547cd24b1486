// Power fails at a chosen write, rename or command: the process that works on the board ends there,
// in the middle of what it writes. Flash is erased by blocks and written in pieces, as NOR flash
// is.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "board/model/flash.h"
#include "board/store/store.h"

namespace power_cut {

constexpr int kCut = 99;

inline bool armed = false;
inline int cut_at = 0;
inline std::map<FILE*, std::string> fed_tools;  // the partition that a pipe's tool writes
// By offset: a word waits in the driver until "ated" stores it in the radio's part.
inline std::map<size_t, std::string> calibration_words;
inline int& points_passed = *static_cast<int*>(
    mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));

// The erased or written state of the flash appears at once; the points are between.
inline void store(const board::Partition& partition, const std::string& content) {
    armed = false;
    board::write_text(partition.device, content);
    armed = true;
}

inline std::string content_of(FILE* pipe) {
    std::string text(static_cast<size_t>(std::ftell(pipe)), '\0');
    std::rewind(pipe);
    text.resize(std::fread(text.data(), 1, text.size(), pipe));
    return text;
}

// None that ends early: its checksum is wrong.
inline board::BootEnvironment boot_environment() {
    const std::string image = board::read_partition(*board::find_partition("Config"));
    const bool whole = image.find(std::string(2, '\0')) != image.npos;
    return whole ? board::BootEnvironment::parse(image) : board::BootEnvironment();
}

// Of the files that outlive a start; the folders are those of a board.
inline void copy_files(const std::string& from, const std::string& to) {
    for (const char* directory : {"/dev", "/etc", "/lib"}) {
        std::filesystem::remove_all(to + directory);
        std::filesystem::create_directories(to);
        std::filesystem::copy(from + directory, to + directory,
                              std::filesystem::copy_options::recursive);
    }
}

// Runs the work in a process of its own, up to its nth point (0: to its end); the points passed.
inline int run_apart(const std::function<void()>& work, int end) {
    points_passed = 0;
    std::fflush(nullptr);
    const bool had_failure = testing::Test::HasFailure();
    const pid_t process = fork();
    if (process == 0) {
        cut_at = end;
        armed = true;
        work();
        armed = false;
        _exit(!had_failure && testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == (end == 0 ? 0 : kCut)) << status;
    return points_passed;
}

// The process may end here. Those that a pipe feeds go on with what they got: last.
inline void point(const std::function<void()>& last = {}) {
    if (!armed || ++points_passed != cut_at) return;
    if (last) last();
    _exit(kCut);
}

inline void write_flash(std::string_view name, std::string_view data) {
    const board::Partition partition = board::find_partition(name).value();
    std::string content = board::read_partition(partition);
    ASSERT_LE(data.size(), content.size());
    const size_t block = partition.erase_size;
    for (size_t start = 0; start < data.size(); start += block) {
        point();
        std::fill_n(content.begin() + static_cast<ptrdiff_t>(start), block, '\xFF');
        store(partition, content);
        size_t done = 0;
        for (const size_t end : {size_t{256}, block / 2, block}) {
            point();
            const std::string_view piece = data.substr(std::min(start + done, data.size()));
            content.replace(start + done, std::min(piece.size(), end - done), piece, 0, end - done);
            store(partition, content);
            done = end;
        }
    }
}

inline std::string boot_variable(const std::string& name) {
    return boot_environment().get(name).value_or("");
}

inline void store_words(bool second_radio) {
    std::string image = board::read_partition(*board::find_partition("Factory"));
    for (const auto& [offset, bytes] : calibration_words)
        image.replace((second_radio ? 0x8000 : 0) + offset, 2, bytes);
    write_flash("Factory", image);
}

inline int run_tool(const std::string& command) {
    point();
    char name[16], value[32] = "";
    unsigned offset, high, low;
    if (std::sscanf(command.c_str(), "/sbin/uboot_env -s %15[^=]=%31[^ ]", name, value) > 0) {
        board::BootEnvironment environment = boot_environment();
        environment.set(name, value);
        write_flash("Config", environment.image());
    } else if (std::sscanf(command.c_str(), "iwpriv %*s e2p %u=%2x%2x", &offset, &high, &low) ==
               3) {
        calibration_words[offset] = {static_cast<char>(low), static_cast<char>(high)};
    } else if (command.starts_with("ated -i")) {
        store_words(command.starts_with("ated -irai0"));
    }
    return 0;
}

// The library's way to files and pipes, with a point in the middle of each write.
inline size_t fwrite(const void* bytes, size_t size, size_t count, FILE* stream) {
    const char* const text = static_cast<const char*>(bytes);
    const size_t half = size * count / 2;
    point();
    std::fwrite(text, 1, half, stream);
    std::fflush(stream);
    const auto tool = fed_tools.find(stream);
    point([&] {
        if (tool != fed_tools.end()) write_flash(tool->second, {text, half});
    });
    std::fwrite(text + half, 1, size * count - half, stream);
    return count;
}

inline FILE* popen(const char* command, const char* mode) {
    point();
    FILE* const pipe = fdopen(memfd_create("pipe", 0), "r+");
    const std::string text = command;
    if (*mode == 'w') {
        fed_tools[pipe] = text.substr(text.rfind(' ') + 1);
    } else {
        std::fputs((boot_variable(text.substr(text.rfind(' ') + 1)) + "\n").c_str(), pipe);
        std::rewind(pipe);
    }
    return pipe;
}

inline int pclose(FILE* pipe) {
    if (const auto tool = fed_tools.extract(pipe)) write_flash(tool.mapped(), content_of(pipe));
    return std::fclose(pipe);
}

}  // namespace power_cut

// Of the host's files. What a process appends is its journal, which no start reads.
extern "C" ssize_t write(int descriptor, const void* bytes, size_t size) {
    size_t done = 0;
    if (power_cut::armed && descriptor > STDERR_FILENO &&
        (fcntl(descriptor, F_GETFL) & O_APPEND) == 0) {
        power_cut::point();
        done = static_cast<size_t>(syscall(SYS_write, descriptor, bytes, size / 2));
        power_cut::point();
    }
    const long rest =
        syscall(SYS_write, descriptor, static_cast<const char*>(bytes) + done, size - done);
    return rest < 0 ? rest : static_cast<ssize_t>(done) + rest;
}

extern "C" int rename(const char* from, const char* to) noexcept {
    power_cut::point();
    return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}
