// The library's hot paths, each beside an ordinary way of the same work and, for texts, beside
// looking at every byte once. Each way does n units of work, then 2 n: the difference is what a
// unit costs, without what a call costs once.
// usage: paths --count | --time
//
// With --count it runs under bench/counter.cpp, which writes a number for each line "path unit way
// n" and "path unit way 2n" here. With --time it prints a table of its own.
#include <dlfcn.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "bench/marks.h"
#include "bench/ordinary.h"
#include "bench/system.h"
#include "platform/platform.h"
#include "src/host/host.h"

namespace bench {
namespace {

constexpr const char* kCopy = "/libplatform.so";  // this program has the library itself already

int amount = 0;  // of units that the prepared work has

std::string station_table(int rows) {
    std::string text = "ra0       get_mac_table:\nV2 MAC AID PSM AUTH RSSI\n";
    char line[128];
    for (int i = 0; i < rows; ++i) {
        std::snprintf(line, sizeof line,
                      "0011223344%02x %d %d 0 1 %d %d %d %d %lld -%d/-47/-127/-127\n", i, i % 4,
                      i + 1, -40 - i % 50, i % 100, 866, 123456 * i, 98765432101LL * i, 45 + i % 9);
        text += line;
    }
    return text;
}

std::string survey_table(int rows) {
    std::string text =
        "Ch  SSID                             BSSID               Security       Siganl(%)W-Mode\n";
    const char* const kSecurity[] = {"WPA2PSK/AES", "WPA1PSKWPA2PSK/TKIPAES", "NONE", "WPA2/AES"};
    char line[256];
    for (int i = 0; i < rows; ++i) {
        std::snprintf(
            line, sizeof line, "%-4d%-33s00:11:22:aa:bb:%02x   %s %d(-%d) 11b/g/n %s Infra %s%s\n",
            1 + i % 13, "A neighbour's network", i, kSecurity[i % 4], i % 100, 50 + i % 40,
            i % 3 == 0 ? "ABOVE" : "NONE", i % 2 == 0 ? "YES PBC" : "YES PIN",
            i % 4 == 0 ? " 10203040 001122334455 66778899aabb router          " : "");
        text += line;
    }
    return text;
}

// The radios' entries behind those of others.
std::string index_file(int others) {
    std::string text;
    for (int i = 0; i < others; ++i) text += "OTHER" + std::to_string(100 + i) + "_key=value\n";
    return text +
           "INDEX0_main_ifname=ra0\nINDEX0_ext_ifname=ra\nINDEX0_apcli_ifname=apcli\n"
           "INDEX0_profile_path=/etc/wireless/radio0.dat\nINDEX1_main_ifname=rai0\n"
           "INDEX1_ext_ifname=rai\nINDEX1_profile_path=/etc/wireless/radio1.dat\n";
}

// The button's pin is the last.
std::string pin_file(int pins) {
    std::string text = "PIN: (MODE)(PULL_SEL)...\n====\n";
    for (int pin = 1; pin < pins; ++pin) text += std::to_string(pin) + ": 1 0 1 1 0 0 0 0 0\n";
    return text + "999: 1 0 1 1 0 0 0 0 0\n";
}

void prepare_board() {
    write_file(kIndexPath, index_file(0));
    write_file("/proc/mtd", "dev: size erasesize name\nmtd0: 00010000 00001000 \"Factory\"\n");
    write_file("/dev/mtd0", std::string(0x10000, 'c'));
    write_file("/lib/firmware/eeprom.bin", "");
}

int load(const std::string& path) {
    void* const loaded = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (loaded == nullptr || dlclose(loaded) != 0) give_up(path.c_str());
    return 0;
}

// As many accesses as the library makes, with nothing around them.
void request_registers(int count) {
    for (int i = 0; i < count; ++i) {
        uint32_t words[8] = {31, 0x84, 0, 0, 0, 0, 0, 0};
        ifreq request = {};
        std::strcpy(request.ifr_name, "eth0");
        request.ifr_data = reinterpret_cast<char*>(words);
        ioctl(0, 0x89F3, &request);
    }
}

port_counters counters;
switch_mac_entry entries[2048];

struct Library {
    static int stations() { return wireless_api_get_station_list(&bench::stations); }
    static int survey() { return platform_wireless_api_get_ap_list(&networks); }
    static int name() { return *get_wl_ifname(0x10002); }
    static int apply() { return platform_set_wireless(nullptr, "ra0"); }
    static int filter() { return wireless_apply_macauth(0); }
    static int walk() {
        const int found = mt753x_get_all_macentry(entries, 2048, 0x7F);
        if (found != answers.switch_entries) give_up("addresses are missing");
        return found;
    }
    static int port() { return get_eport_stat(1, &counters); }
    static int command() { return rt61_wireless_api_clear_station_info("ra0"); }
    static int load() { return bench::load(in_tree(kCopy)); }
};

struct Bare {
    static int walk() {
        for (int i = 0; i < answers.switch_entries; ++i) {
            request_registers(5);
            usleep(1000);
        }
        return 0;
    }
    static int port() {
        hw_info hw;
        const intptr_t lock = lock_file("switch");
        get_si("hw", &hw);
        get_dev_port(&hw, 1);
        const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        request_registers(13);
        close(socket);
        return unlock_file(lock);
    }
    static int command() {
        char command[256];
        std::snprintf(command, sizeof command, "/sbin/iwpriv %s set ResetCounter=1", "ra0");
        return std::system(command);
    }
    static int start() {
        char command[128];
        for (const char* const module : module_list) {
            std::snprintf(command, sizeof command, "insmod %s", module);
            system2("%s", command);
        }
        return 0;
    }
    static int load() { return bench::load(EMPTY_LIBRARY); }
};

using Work = int (*)();

// One call does all units where a table or an answer of that many was prepared for it.
struct Path {
    const char* name;
    const char* unit;
    int units;
    std::string (*table)(int units);
    const char* file;  // where the table is
    int Answers::*answer;
    Work library;
    Work ordinary;
};

int Answers::*const kNone = nullptr;
int Answers::*const kBss = &Answers::bss_count;
int Answers::*const kFilter = &Answers::filter_addresses;
int Answers::*const kEntries = &Answers::switch_entries;

const Path kPaths[] = {
    {"station list",   "station", 64,   station_table, kStationPath, kNone,    Library::stations,
     read_stations                                                                                                },
    {"survey list",    "network", 128,  survey_table,  kSurveyPath,  kNone,    Library::survey,     read_survey   },
    {"button pin",     "line",    64,   pin_file,      kPinPath,     kNone,    pushed_reset_button, find_pin      },
    {"interface name", "line",    64,   index_file,    kIndexPath,   kNone,    Library::name,       find_name     },
    {"filter list",    "address", 100,  nullptr,       nullptr,      kFilter,  Library::apply,      list_addresses},
    {"filter command", "address", 100,  nullptr,       nullptr,      kFilter,  Library::filter,     list_addresses},
    {"radio apply",    "BSS",     2,    nullptr,       nullptr,      kBss,     Library::apply,      nullptr       },
    {"address table",  "entry",   1000, nullptr,       nullptr,      kEntries, Library::walk,       Bare::walk    },
    {"port counters",  "call",    8,    nullptr,       nullptr,      kNone,    Library::port,       Bare::port    },
    {"command",        "call",    8,    nullptr,       nullptr,      kNone,    Library::command,    Bare::command },
    {"start",          "call",    1,    nullptr,       nullptr,      kNone,    init_mt7622,         Bare::start   },
    {"load",           "call",    1,    nullptr,       nullptr,      kNone,    Library::load,       Bare::load    },
};

const Path* at = nullptr;

int look_at_bytes() {
    static char bytes[65536];
    FILE* const file = fopen(at->file, "r");
    const size_t size = std::fread(bytes, 1, sizeof bytes, file);
    std::fclose(file);
    int lines = 0;
    for (size_t i = 0; i < size; ++i) {
        asm volatile("" : "+r"(lines));  // one byte after the other, not sixteen
        lines += bytes[i] == '\n';
    }
    return lines;
}

void prepare(int units) {
    amount = units;
    answers = {};
    if (at->table != nullptr) answers.bss_count = PLATFORM_BSS_MAX;
    if (at->answer != nullptr) answers.*at->answer = units;
    if (at->table != nullptr) write_file(at->file, answers.survey = at->table(units));
}

void run(Work work) {
    const bool at_once = at->table != nullptr || at->answer != nullptr;
    for (int left = at_once ? 1 : amount; left > 0; --left) work();
}

template <class List>
void expect_same_records(const Path& path, List& list) {
    at = &path;
    prepare(2 * path.units);
    const auto of_library = std::make_unique<List>();
    for (const Work work : {path.library, path.ordinary}) {
        list = {};
        std::strcpy(list.ifname, "ra0");
        work();
        if (work == path.library) *of_library = list;
    }
    if (list.count != static_cast<uint32_t>(amount) || list.count != of_library->count ||
        std::memcmp(list.entries, of_library->entries, sizeof list.entries) != 0)
        give_up("the ways come to different records");
}

// What a first call sets up once is not the path's.
template <class Measure>
void measure_twice(Work work, Measure measure) {
    for (const int factor : {1, 2}) {
        prepare(factor * at->units);
        run(work);
        measure();
    }
}

void count(const char* way, Work work) {
    measure_twice(work, [work] {
        syscall(kStart);
        run(work);
        syscall(kStop);
    });
    std::printf("%s\t%s\t%s\t%d\n", at->name, at->unit, way, at->units);
}

// The least of many: the one that nobody disturbed.
void time_work(const char* way, Work work) {
    using Clock = std::chrono::steady_clock;
    Clock::duration least[2] = {Clock::duration::max(), Clock::duration::max()};
    measure_twice(work, [&] {
        auto& shortest = least[amount / at->units - 1];
        for (int i = 0; i < 200; ++i) {
            const auto before = Clock::now();
            run(work);
            shortest = std::min(shortest, Clock::now() - before);
        }
    });
    const std::chrono::duration<double, std::nano> more = least[1] - least[0];
    std::printf("%-16s %-10s %-10s %10.0f ns\n", at->name, at->unit, way, more.count() / at->units);
}

}  // namespace
}  // namespace bench

int main(int count, char** arguments) {
    using namespace bench;
    const std::string_view mode = count == 2 ? arguments[1] : "";
    if (mode != "--count" && mode != "--time") {
        std::puts("usage: paths --count | --time");
        return 2;
    }
    const auto measure = mode == "--count" ? bench::count : time_work;
    std::ifstream library(PLATFORM_LIBRARY);
    const std::string image(std::istreambuf_iterator<char>(library), {});
    make_tree();
    prepare_board();
    write_file(kCopy, image);
    expect_same_records(kPaths[0], stations);
    expect_same_records(kPaths[1], networks);
    for (const Path& path : kPaths) {
        at = &path;
        measure("library", path.library);
        if (path.ordinary != nullptr) measure("ordinary", path.ordinary);
        if (path.table != nullptr) measure("bytes", look_at_bytes);
    }
    remove_tree();
}
