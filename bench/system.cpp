#include "bench/system.h"

#include <dlfcn.h>
#include <linux/wireless.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <utility>

#include "board/store/store.h"
#include "src/host/host.h"

namespace bench {

Answers answers;

namespace {

constexpr unsigned long kSurveyRequest = SIOCIWFIRSTPRIV + 13;
constexpr unsigned long kMiiRead = 0x89F3;
constexpr unsigned long kMiiWrite = 0x89F4;

std::string tree;
uint32_t presented = 0;  // entry of the switch's address table, all of them in use

template <class Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Before there is a tree, every path is the machine's.
std::string redirected(const char* path) {
    return tree.empty() || std::strncmp(path, tree.c_str(), tree.size()) == 0 ? path : tree + path;
}

struct FilterTable {
    mac_filter_table head;
    mac_filter_entry entries[PLATFORM_BSS_MAX * 256];
};

constexpr wireless_conf sample_bss() {
    wireless_conf conf = {};
    conf.enabled = 1;
    conf.channel = 6;
    conf.auth_mode = WIRELESS_AUTH_WPA2PSK;
    conf.encryption = WIRELESS_CIPHER_AES;
    std::copy_n("Home network", 12, conf.ssid);
    std::copy_n("a passphrase", 12, conf.wpa_psk);
    return conf;
}

uint32_t register_value(uint32_t offset) {
    switch (offset) {
        case 0x80:
            return static_cast<int>(presented) == answers.switch_entries - 1 ? 0x6000 : 0x2000;
        case 0x84:
            return 0x02000000 | presented;
        case 0x88:
            return 0x5E010000;
        default:
            return 0xFF000010;
    }
}

}  // namespace

// In memory where there is a place for it.
void make_tree() {
    std::string folder = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    folder += "/bench.XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) give_up("no folder");
    tree = folder;
}

void remove_tree() {
    std::filesystem::remove_all(std::exchange(tree, ""));
}

void give_up(const char* what) {
    std::printf("cannot measure: %s\n", what);
    remove_tree();
    std::exit(1);
}

std::string in_tree(const char* path) {
    return tree + path;
}

void write_file(const char* path, const std::string& text) {
    const std::filesystem::path file = in_tree(path);
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

}  // namespace bench

using namespace bench;

extern "C" {

FILE* fopen(const char* path, const char* mode) {
    static auto* const next = real<FILE*(const char*, const char*)>("fopen");
    return next(redirected(path).c_str(), mode);
}

int open(const char* path, int flags, ...) {
    static auto* const next = real<int(const char*, int, int)>("open");
    return next(redirected(path).c_str(), flags, 0600);
}

// The next call wants what the library removes behind itself.
int unlink(const char*) noexcept {
    return 0;
}

int mkdir(const char* path, mode_t mode) noexcept {
    static auto* const next = real<int(const char*, mode_t)>("mkdir");
    return next(redirected(path).c_str(), mode);
}

int system(const char*) {
    return 0;
}

int system2(const char*, ...) {
    return 0;
}

int usleep(useconds_t) {
    return 0;
}

unsigned sleep(unsigned) {
    return 0;
}

time_t time(time_t*) noexcept {
    return 1;
}

int ioctl(int, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const record = va_arg(arguments, void*);
    va_end(arguments);
    if (request == kSurveyRequest) {
        auto& survey = static_cast<iwreq*>(record)->u.data;
        answers.survey.copy(static_cast<char*>(survey.pointer), answers.survey.size());
        survey.length = static_cast<uint16_t>(answers.survey.size());
    } else if (request == kMiiRead || request == kMiiWrite) {
        auto* const words = reinterpret_cast<uint32_t*>(static_cast<ifreq*>(record)->ifr_data);
        if (request == kMiiRead)
            words[3] = register_value(words[1]);
        else
            presented = words[2] == 0x8004 ? 0 : presented + 1;
    }
    return 0;
}

int get_si(const char*, void* block) {
    static_cast<hw_info*>(block)->reset_button_gpio = kButtonPin;
    return 0;
}

int genconfig_get_value_direct(const char*, const char* key, char* value) {
    std::strcpy(value, std::strstr(key, "name") != nullptr ? "eeprom.bin" : "0");
    return 0;
}

int read_all_mbss_conf(const char*, wireless_conf* records, int) {
    static constexpr wireless_conf kBss = sample_bss();
    for (int bss = 0; bss < answers.bss_count; ++bss) records[bss] = kBss;
    return answers.bss_count;
}

mac_filter_table* macdb_read(uint32_t, int) {
    static FilterTable table;
    table.head.count = answers.filter_addresses;
    for (uint8_t number = 0; mac_filter_entry & entry : table.entries) entry.mac[5] = number++;
    return &table.head;
}

const int32_t* get_wlm_list() {
    static constexpr int32_t kRadios[] = {0, 1, -1};
    return kRadios;
}

const char* get_my_mac() {
    return "00:11:22:33:44:55";
}

const char* easymesh_get_almac() {
    return "00:11:22:33:44:55";
}

int wireless_check_channel_valid(const char*, uint64_t, int, int) {
    return 1;
}

int get_dev_port(const hw_info*, int) {
    return 1;
}

}  // extern "C"
