#include "bench/system.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <linux/wireless.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "board/store/store.h"

namespace bench {
namespace {

constexpr unsigned long kSurveyRequest = SIOCIWFIRSTPRIV + 13;
constexpr unsigned long kMiiRead = 0x89F3;
constexpr unsigned long kMiiWrite = 0x89F4;

std::string tree;

template <class Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

std::string survey_answer;
std::function<void(uint32_t* words, bool write)> switch_answer;

// In memory where there is a place for it, so that no disk is measured.
void make_tree() {
    std::string folder = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    folder += "/bench.XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) give_up(folder);
    board::set_root(folder);
    tree = folder;
}

void remove_tree() {
    std::filesystem::remove_all(tree);
}

void give_up(std::string_view what) {
    std::printf("cannot measure: %.*s\n", static_cast<int>(what.size()), what.data());
    remove_tree();
    std::exit(1);
}

std::string in_tree(std::string_view path) {
    return board::in_tree(path);
}

void write_file(std::string_view path, std::string_view text) {
    board::make_directories(path.substr(0, path.rfind('/')));
    if (!board::write_text(path, text)) give_up(path);
}

std::string read_file(std::string_view path) {
    return board::read_text(path).value_or("");
}

std::string_view read_whole(std::string_view path) {
    static char text[65536];
    const int file = open(std::string(path).c_str(), O_RDONLY | O_CLOEXEC);
    const ssize_t size = read(file, text, sizeof text);
    close(file);
    if (size < 0) give_up(path);
    return {text, static_cast<size_t>(size)};
}

void run_shell(const std::string& command) {
    static auto* const shell = real<int(const char*)>("system");
    if (shell(command.c_str()) != 0) give_up(command);
}

namespace {

// Before there is a tree, every path is the machine's.
std::string redirected(const char* path) {
    if (*path != '/' || std::string_view(path).starts_with(tree)) return path;
    return tree + path;
}

int answer_survey(iwreq& request) {
    std::memcpy(request.u.data.pointer, survey_answer.data(), survey_answer.size());
    request.u.data.length = static_cast<uint16_t>(survey_answer.size());
    return 0;
}

int answer_switch(ifreq& request, bool write) {
    switch_answer(reinterpret_cast<uint32_t*>(request.ifr_data), write);
    return 0;
}

}  // namespace
}  // namespace bench

extern "C" {

int system(const char*) {
    return 0;
}

int system2(const char*, ...) {
    return 0;
}

int system3(const char*, ...) {
    return 0;
}

// The board's host would note each lock in its journal.
intptr_t lock_file(const char*) {
    return 1;
}

int unlock_file(intptr_t) {
    return 0;
}

FILE* fopen(const char* path, const char* mode) {
    static auto* const next = bench::real<FILE*(const char*, const char*)>("fopen");
    return next(bench::redirected(path).c_str(), mode);
}

int open(const char* path, int flags, ...) {
    static auto* const next = bench::real<int(const char*, int, int)>("open");
    return next(bench::redirected(path).c_str(), flags, 0600);
}

// The next call wants what the library removes behind itself.
int unlink(const char*) noexcept {
    return 0;
}

int ioctl(int, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const record = va_arg(arguments, void*);
    va_end(arguments);
    if (request == bench::kSurveyRequest) return bench::answer_survey(*static_cast<iwreq*>(record));
    if (request != bench::kMiiRead && request != bench::kMiiWrite) return 0;
    return bench::answer_switch(*static_cast<ifreq*>(record), request == bench::kMiiWrite);
}

}  // extern "C"
