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
#include <time.h>
#include <unistd.h>

#include <algorithm>
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

constexpr const char* kAnyRadio = "ra0";
constexpr const char* kCopy = "/libplatform.so";  // this program has the library itself already

int amount = 0;  // of units that the prepared work has
std::string library;

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
    std::strcpy(stations.ifname, "ra0");
    std::strcpy(networks.ifname, "ra0");
    answers.button_pin = 999;
}

void repeat(void (*once)()) {
    for (int i = 0; i < amount; ++i) once();
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

void walk_addresses() {
    static switch_mac_entry entries[2048];
    if (mt753x_get_all_macentry(entries, amount, 0x7F) != amount) give_up("addresses are missing");
}

void walk_bare() {
    for (int i = 0; i < amount; ++i) {
        request_registers(5);
        usleep(1000);
    }
}

void read_counters() {
    static port_counters counters;
    repeat([] { get_eport_stat(1, &counters); });
}

void counters_bare() {
    repeat([] {
        hw_info hw;
        const intptr_t lock = lock_file("switch");
        get_si("hw", &hw);
        get_dev_port(&hw, 1);
        const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        request_registers(13);
        close(socket);
        unlock_file(lock);
    });
}

void form_commands() {
    repeat([] {
        char command[256];
        std::snprintf(command, sizeof command, "/sbin/iwpriv %s set ResetCounter=1", "ra0");
        if (std::system(command) != 0) give_up(command);
    });
}

void start() {
    repeat([] { init_mt7622(); });
}

void load_modules() {
    repeat([] {
        char command[128];
        for (const char* const module : module_list) {
            std::snprintf(command, sizeof command, "insmod %s", module);
            system2("%s", command);
        }
    });
}

void load(const std::string& path) {
    void* const loaded = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (loaded == nullptr || dlclose(loaded) != 0) give_up(path.c_str());
}

void load_library() {
    repeat([] { load(in_tree(kCopy)); });
}

void load_empty() {
    repeat([] { load(EMPTY_LIBRARY); });
}

void look_at_bytes(const char* path) {
    static char bytes[65536];
    FILE* const file = fopen(path, "r");
    const size_t size = std::fread(bytes, 1, sizeof bytes, file);
    std::fclose(file);
    int lines = 0;
    for (size_t i = 0; i < size; ++i) {
        asm volatile("" : "+r"(lines));  // one byte after the other, not sixteen
        lines += bytes[i] == '\n';
    }
}

void prepare_nothing() {}
void prepare_stations() {
    answers.bss_count = 4;
    write_file(kStationPath, station_table(amount));
}
void prepare_survey() {
    write_file(kSurveyPath, answers.survey = survey_table(amount));
}
void prepare_pins() {
    write_file(kPinPath, pin_file(amount));
}
void prepare_index() {
    write_file(kIndexPath, index_file(amount));
}
void prepare_filter() {
    answers.bss_count = 1;
    answers.filter_addresses = amount;
}
void prepare_radio() {
    answers.bss_count = amount;
    answers.filter_addresses = 0;
}
void prepare_load() {
    write_file(kCopy, library);
}

void list_stations() {
    wireless_api_get_station_list(&stations);
}
void list_networks() {
    platform_wireless_api_get_ap_list(&networks);
}
void ask_button() {
    pushed_reset_button();
}
void ask_name() {
    get_wl_ifname(0x10002);
}
void apply_radio() {
    platform_set_wireless(nullptr, kAnyRadio);
}
void apply_filter() {
    wireless_apply_macauth(0);
}
void clear_stations() {
    repeat([] { rt61_wireless_api_clear_station_info(kAnyRadio); });
}

struct Path {
    const char* name;
    const char* unit;
    int units;
    void (*prepare)();
    void (*library)();
    void (*ordinary)();
    const char* text;  // the file whose bytes are looked at
};

constexpr Path kPaths[] = {
    {"station list",   "station", 64,   prepare_stations, list_stations,  read_stations,  kStationPath},
    {"survey list",    "network", 128,  prepare_survey,   list_networks,  read_survey,    kSurveyPath },
    {"button pin",     "line",    64,   prepare_pins,     ask_button,     find_pin,       kPinPath    },
    {"interface name", "line",    64,   prepare_index,    ask_name,       find_name,      kIndexPath  },
    {"filter list",    "address", 100,  prepare_filter,   apply_radio,    list_addresses, nullptr     },
    {"filter command", "address", 100,  prepare_filter,   apply_filter,   list_addresses, nullptr     },
    {"radio apply",    "BSS",     2,    prepare_radio,    apply_radio,    nullptr,        nullptr     },
    {"address table",  "entry",   1000, prepare_nothing,  walk_addresses, walk_bare,      nullptr     },
    {"port counters",  "call",    8,    prepare_nothing,  read_counters,  counters_bare,  nullptr     },
    {"command",        "call",    8,    prepare_nothing,  clear_stations, form_commands,  nullptr     },
    {"start",          "call",    1,    prepare_nothing,  start,          load_modules,   nullptr     },
    {"load",           "call",    1,    prepare_load,     load_library,   load_empty,     nullptr     },
};

// Only ways that come to the same records can be compared.
void expect_same_records() {
    for (const Path& path : {kPaths[0], kPaths[1]}) {
        amount = 2 * path.units;
        path.prepare();
        path.library();
        const auto list = std::make_unique<station_list>(stations);
        const auto other = std::make_unique<ap_list>(networks);
        path.ordinary();
        if (std::memcmp(list.get(), &stations, sizeof stations) != 0 ||
            std::memcmp(other.get(), &networks, sizeof networks) != 0)
            give_up("the ways come to different records");
    }
    if (stations.count != 128 || networks.count != 256) give_up("rows are missing");
}

// What a first call sets up once is not the path's.
template <class Work, class Measure>
void measure_twice(const Path& path, Work work, Measure measure) {
    for (const int factor : {1, 2}) {
        amount = factor * path.units;
        path.prepare();
        work();
        measure();
    }
}

double seconds(void (*work)()) {
    timespec now[2];
    clock_gettime(CLOCK_MONOTONIC, &now[0]);
    work();
    clock_gettime(CLOCK_MONOTONIC, &now[1]);
    return static_cast<double>(now[1].tv_sec - now[0].tv_sec) +
           static_cast<double>(now[1].tv_nsec - now[0].tv_nsec) * 1e-9;
}

const Path* at = nullptr;

void read_bytes() {
    look_at_bytes(at->text);
}

void count(const char* way, void (*work)()) {
    if (work == nullptr) return;
    measure_twice(*at, work, [work] {
        syscall(kStart);
        work();
        syscall(kStop);
    });
    std::printf("%s\t%s\t%s\t%d\n", at->name, at->unit, way, at->units);
}

// The least of many: the one that nobody disturbed.
void time_work(const char* way, void (*work)()) {
    if (work == nullptr) return;
    double least[2] = {1e9, 1e9};
    measure_twice(*at, work, [&] {
        double& shortest = least[amount / at->units - 1];
        for (int i = 0; i < 200; ++i) shortest = std::min(shortest, seconds(work));
    });
    std::printf("%-16s %-10s %-10s %10.0f ns\n", at->name, at->unit, way,
                (least[1] - least[0]) / at->units * 1e9);
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
    std::ifstream image(PLATFORM_LIBRARY);
    library.assign(std::istreambuf_iterator<char>(image), {});
    make_tree();
    prepare_board();
    expect_same_records();
    for (const Path& path : kPaths) {
        at = &path;
        measure("library", path.library);
        measure("ordinary", path.ordinary);
        measure("bytes", path.text != nullptr ? read_bytes : nullptr);
    }
    remove_tree();
}
