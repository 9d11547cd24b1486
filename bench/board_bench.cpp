// The work of a start, a full address table and the pin file, each beside the barest way of doing
// the same. The library's files and the switch are of this program's own.

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <net/if.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "bench/address_table.h"
#include "platform/platform.h"

namespace {

constexpr int kAddresses = 2048;
constexpr int kWalked = 2046;  // as many as one search goes through
constexpr int kPins = 100;

std::string root;
double in_commands = 0;  // seconds of this process's CPU time, without the commands' own
long accesses = 0;
int presented = 0;

template <class Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::string redirected(const char* path) {
    return *path == '/' && std::strncmp(path, root.c_str(), root.size()) != 0 ? root + path : path;
}

double cpu_seconds() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The commands' share included.
double cpu_seconds_with_commands() {
    rusage used = {};
    getrusage(RUSAGE_CHILDREN, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return cpu_seconds() + seconds(used.ru_utime) + seconds(used.ru_stime);
}

double wall_seconds() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void write_file_of(const std::string& path, const std::string& text) {
    std::ofstream(root + path) << text;
}

void prepare() {
    char folder[] = "/tmp/bench.XXXXXX";
    root = mkdtemp(folder);
    const std::string make = "mkdir -p " + root + "/proc " + root + "/dev " + root + "/tmp " +
                             root + "/lib/firmware " + root +
                             "/sys/devices/platform/10005000.pinctrl";
    if (std::system(make.c_str()) != 0) std::exit(1);
    write_file_of("/proc/mtd", "dev: size erasesize name\nmtd0: 00010000 00001000 \"Factory\"\n");
    write_file_of("/dev/mtd0", std::string(0x10000, 'c'));
    std::string pins = "PIN: (MODE)(PULL_SEL)...\n====\n";
    for (int pin = 0; pin < kPins; ++pin) pins += std::to_string(pin) + ": 1 0 1 1 0 0 0 0 0\n";
    write_file_of("/sys/devices/platform/10005000.pinctrl/mt_gpio", pins);
}

int answer_register(uint32_t* words, bool write) {
    ++accesses;
    answer_table(words, write, kAddresses, presented);
    return 0;
}

void start_by_library() {
    init_mt7622();
}

}  // namespace

extern "C" {

int system2(const char* format, ...) {
    char command[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(command, sizeof command, format, arguments);
    va_end(arguments);
    const double before = cpu_seconds();
    const int status = std::system(":");
    in_commands += cpu_seconds() - before;
    return status;
}

int get_si(const char*, void* block) {
    hw_info* const hw = static_cast<hw_info*>(block);
    std::memset(hw, 0xFF, sizeof *hw);
    hw->reset_button_gpio = kPins - 1;
    return 0;
}

int genconfig_get_value_direct(const char*, const char* key, char* value) {
    const char* const answer = std::strstr(key, "name") != nullptr ? "eeprom.bin"
                               : key[5] == '0'                     ? "0"
                                                                   : "8000";
    std::strcpy(value, answer);
    return 0;
}

FILE* fopen(const char* path, const char* mode) {
    return real<FILE*(const char*, const char*)>("fopen")(redirected(path).c_str(), mode);
}

int open(const char* path, int flags, ...) {
    return real<int(const char*, int, int)>("open")(redirected(path).c_str(), flags, 0600);
}

int mkdir(const char* path, mode_t mode) noexcept {
    return real<int(const char*, mode_t)>("mkdir")(redirected(path).c_str(), mode);
}

int usleep(useconds_t microseconds) {
    return real<int(useconds_t)>("usleep")(microseconds);
}

int ioctl(int, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    ifreq* const interface = va_arg(arguments, ifreq*);
    va_end(arguments);
    return answer_register(reinterpret_cast<uint32_t*>(interface->ifr_data), request == 0x89F4);
}

}  // extern "C"

namespace {

// A start is to copy the calibration data for the driver, however barely.
void copy_calibration() {
    static char data[0x10000];
    mkdir("/tmp/eeprom", 0744);
    const int from = open("/dev/mtd0", O_RDONLY);
    const int to = open("/lib/firmware/eeprom.bin", O_WRONLY | O_CREAT | O_TRUNC);
    const auto size = static_cast<ssize_t>(sizeof data);
    if (read(from, data, sizeof data) != size || write(to, data, sizeof data) != size) std::exit(1);
    close(from);
    close(to);
}

void start_by_bare_calls() {
    copy_calibration();
    for (const char* const module : module_list) system2("insmod %s", module);
}

void scan_by_library() {
    benchmark::DoNotOptimize(pushed_reset_button());
}

void scan_by_fscanf() {
    FILE* const file = fopen("/sys/devices/platform/10005000.pinctrl/mt_gpio", "r");
    int n[10];
    if (fscanf(file, "%*[^\n]\n") == EOF || fscanf(file, "%*[^\n]\n") == EOF) std::exit(1);
    while (fscanf(file, "%d:%d%d%d%d%d%d%d%d%d%*[^\n]\n", &n[0], &n[1], &n[2], &n[3], &n[4], &n[5],
                  &n[6], &n[7], &n[8], &n[9]) == 10)
        if (n[0] == kPins - 1) break;
    benchmark::DoNotOptimize(n[4]);
    std::fclose(file);
}

std::vector<switch_mac_entry> entries(kAddresses);

void walk_by_library() {
    accesses = 0;
    mt753x_get_all_macentry(entries.data(), kAddresses, 0x7F);
}

void walk_by_pauses() {
    for (int i = 0; i < kWalked; ++i) usleep(1000);
}

struct Row {
    const char* name;
    void (*library)();
    void (*bare)();
    double (*clock)();
    int calls;
    int rounds;
    double limit;
};

constexpr Row kRows[] = {
    {"start, 105 modules", start_by_library, start_by_bare_calls, cpu_seconds_with_commands, 1,    25,
     1.02                                                                                                  },
    {"pins, 100 lines",    scan_by_library,  scan_by_fscanf,      cpu_seconds,               1000, 15, 1.00},
    {"addresses, 2048",    walk_by_library,  walk_by_pauses,      wall_seconds,              1,    2,  1.10},
};

double least(const std::vector<double>& times) {
    double value = times.front();
    for (const double time : times) value = std::min(value, time);
    return value;
}

bool report(const char* name, double library, double bare, double limit) {
    std::printf("%-20s %12.1f us %12.1f us %7.3f   at most %.2f\n", name, library * 1e6, bare * 1e6,
                library / bare, limit);
    return library / bare <= limit;
}

// In turn, so that both see the same machine; the least is the run that nobody disturbed.
bool compare(const Row& row) {
    std::vector<double> library;
    std::vector<double> bare;
    for (int round = 0; round < row.rounds; ++round) {
        for (const auto& [work, times] : {
                 std::pair{row.library, &library},
                 {row.bare,    &bare   }
        }) {
            const double before = row.clock();
            for (int call = 0; call < row.calls; ++call) work();
            times->push_back((row.clock() - before) / row.calls);
        }
    }
    return report(row.name, least(library), least(bare), row.limit);
}

// Of this process alone. Starting a command costs the same on both sides and far more than the
// rest: it counts once, and the rest is measured beside it.
bool compare_own_start() {
    std::vector<double> commands;
    std::vector<double> library;
    std::vector<double> bare;
    for (int round = 0; round < 50; ++round) {
        const bool by_library = round % 2 == 0;
        in_commands = 0;
        const double before = cpu_seconds();
        by_library ? start_by_library() : start_by_bare_calls();
        (by_library ? library : bare).push_back(cpu_seconds() - before - in_commands);
        commands.push_back(in_commands);
    }
    const bool kept = report("start, own CPU", least(commands) + least(library),
                             least(commands) + least(bare), 1.02);
    std::printf(
        "    outside the commands %12.1f us %12.1f us   one 64 KiB read and write are both's\n",
        least(library) * 1e6, least(bare) * 1e6);
    return kept;
}

}  // namespace

int main() {
    prepare();
    std::printf("%-20s %15s %15s %7s\n", "work", "library", "bare", "ratio");
    bool kept = compare_own_start();
    for (const Row& row : kRows) kept = compare(row) && kept;
    // Status, attributes, two address words and the step to the next entry.
    std::printf("register accesses for each of %d addresses: %.2f, at most 6\n", kWalked,
                static_cast<double>(accesses) / kWalked);
    kept = kept && accesses <= 6L * kWalked;
    const std::string remove = "rm -rf " + root;
    const bool removed = std::system(remove.c_str()) == 0;
    std::printf("limits: %s\n", kept ? "kept" : "NOT KEPT");
    return kept && removed ? 0 : 1;
}
