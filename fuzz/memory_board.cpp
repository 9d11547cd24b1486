#include "fuzz/memory_board.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "src/host/host.h"

namespace harness {
namespace {

constexpr int kFirstDevice = 1 << 20;  // no descriptor of the process itself
constexpr size_t kHostValueSize = 128;

MemoryBoard* current = nullptr;

// The library imports them; that they do nothing is all that it can see of them.
constexpr const char* kWithoutEffect[] = {
    "genconfig_free_ll",
    "genconfig_remove_item",
    "wireless_api_get_best_channel2",
    "check_wireless_ifstatus",
    "get_ifexist",
    "get_ifstatus",
    "ifup",
    "ifdown",
    "set_ifconfig",
    "stop_wan",
    "apply_network_configuration",
    "signal_start",
    "signal_wan",
    "wireless_set_led",
    "wireless_set_radius_iptables",
    "set_wireless_conf",
    "iwconfig_client_get_channel",
    "iwconfig_client_get_link_speed",
    "istatus_set_value_direct",
    "iconfig_set_intvalue_direct",
    "syslog_msg",
    "write_file",
    "usleep",
    "sleep",
    "kill",
    "mkdir",
    "unlink",
};

int do_nothing() {
    return 0;
}

int set_key(MemoryBoard::Keys& keys, const char* key, std::string value) {
    const auto row = std::ranges::find(keys, key, &MemoryBoard::Keys::value_type::first);
    if (row != keys.end()) {
        row->second = std::move(value);
    } else {
        keys.emplace_back(key, std::move(value));
    }
    return 0;
}

}  // namespace

struct MemoryHooks {
    static int system(const char* command) { return current->run(command); }

    [[gnu::format(printf, 1, 2)]] static int run_host(const char* format, ...) {
        char command[8192];
        va_list arguments;
        va_start(arguments, format);
        const int length = vsnprintf(command, sizeof command, format, arguments);
        va_end(arguments);
        if (length < 0 || length >= int{sizeof command}) std::abort();
        return current->run(command);
    }

    static FILE* open_text(const std::string& text) {
        ++current->streams_;
        return fmemopen(const_cast<char*>(text.data()), text.size(), "r");
    }

    static FILE* fopen(const char* path, const char* mode) {
        if (*mode == 'r')
            return open_text(std::strstr(path, "l1profile") ? current->index : current->text);
        ++current->streams_;
        return std::fopen("/dev/null", "w");
    }

    static FILE* popen(const char* command, const char* mode) {
        current->run(command);
        return fopen(command, mode);
    }

    static int close_stream(FILE* stream) {
        --current->streams_;
        return std::fclose(stream);
    }

    static int open(const char*, int, mode_t) {
        const int device = kFirstDevice + static_cast<int>(current->devices_.size());
        current->devices_[device] = 0;
        return device;
    }

    static int lstat(const char*, struct stat* entry) {
        *entry = {};
        entry->st_mode = S_IFREG;
        return 0;
    }

    static int socket(int, int, int) { return open("", 0, 0); }

    static int close(int device) {
        if (current->devices_.erase(device) == 0) std::abort();
        return 0;
    }

    static off_t lseek(int device, off_t offset, int from) {
        if (from == SEEK_END) offset += static_cast<off_t>(current->device.size());
        current->devices_.at(device) = static_cast<size_t>(offset);
        return offset;
    }

    static ssize_t read(int device, void* bytes, size_t size) {
        size_t& at = current->devices_.at(device);
        const size_t start = std::min(at, current->device.size());
        const size_t count = std::min(size, current->device.size() - start);
        std::memcpy(bytes, current->device.data() + start, count);
        at += count;
        return static_cast<ssize_t>(count);
    }

    static int ioctl(int device, unsigned long request, void* record) {
        if (!current->devices_.contains(device)) std::abort();
        return current->on_ioctl ? current->on_ioctl(request, record) : 0;
    }

    static time_t time(time_t*) { return 1'700'000'000; }

    static intptr_t lock_file(const char*) { return static_cast<intptr_t>(++current->locks_); }
    static int unlock_file(intptr_t) { return static_cast<int>(--current->locks_); }

    static int file_exists(const char*) { return current->file_is_there; }
    static int get_file_value(const char*, int) { return 1; }
    static int get_file_string(const char*, char* text, int size) {
        sf_strncpy(text, current->text.c_str(), static_cast<size_t>(size));
        trim_crcf(text);
        return *text != '\0';
    }
    static int istatus_get_value_direct(const char*, char* value) {
        sf_strncpy(value, current->text.c_str(), kHostValueSize);
        return 0;
    }
    static int istatus_get_intvalue_direct(const char*) { return 3; }

    static int read_profile(const char*, genconfig_list*) {
        current->profile_.clear();
        return 0;
    }
    static int set_value(genconfig_list*, const char* key, const char* value) {
        return set_key(current->profile_, key, value);
    }
    static int set_number(genconfig_list*, const char* key, int32_t value) {
        return set_key(current->profile_, key, std::to_string(value));
    }
    static int write_profile(const char* path, genconfig_list*) {
        for (const auto& [key, value] : current->profile_)
            set_key(current->profiles[path], key.c_str(), value);
        return 0;
    }
    static int set_value_direct(const char* path, const char* key, const char* value) {
        return set_key(current->profiles[path], key, value);
    }
    static int set_number_direct(const char* path, const char* key, int32_t value) {
        return set_key(current->profiles[path], key, std::to_string(value));
    }
    static int get_value_direct(const char*, const char* key, char* value) {
        const std::string line = std::string(key) + '=';
        const size_t at = current->index.find(line);
        if (at == std::string::npos) return -1;
        const std::string found = current->index.substr(at + line.size(), kHostValueSize - 1);
        sf_strncpy(value, found.substr(0, found.find('\n')).c_str(), kHostValueSize);
        return 0;
    }

    static int essid(const char*, char* essid) {
        sf_strncpy(essid, current->essid.c_str(), kHostValueSize);
        return 0;
    }
    static int ap_mac(const char*, char* mac) {
        sf_strncpy(mac, "00:11:22:AA:BB:CC", 18);
        return 1;
    }
};

MemoryBoard::MemoryBoard() : nowhere_(std::fopen("/dev/null", "w")) {
    current = this;
    for (const char* name : kWithoutEffect) divert(name, do_nothing);
    divert("stdout", &nowhere_);
    divert("stderr", &nowhere_);
    divert("system", MemoryHooks::system);
    divert("system2", MemoryHooks::run_host);
    divert("system3", MemoryHooks::run_host);
    divert("popen", MemoryHooks::popen);
    divert("pclose", MemoryHooks::close_stream);
    divert("fopen", MemoryHooks::fopen);
    divert("fclose", MemoryHooks::close_stream);
    divert("open", MemoryHooks::open);
    divert("socket", MemoryHooks::socket);
    divert("close", MemoryHooks::close);
    divert("lseek", MemoryHooks::lseek);
    divert("read", MemoryHooks::read);
    divert("ioctl", MemoryHooks::ioctl);
    divert("time", MemoryHooks::time);
    divert("lock_file", MemoryHooks::lock_file);
    divert("unlock_file", MemoryHooks::unlock_file);
    divert("file_exists", MemoryHooks::file_exists);
    divert("get_file_value", MemoryHooks::get_file_value);
    divert("get_file_string", MemoryHooks::get_file_string);
    divert("istatus_get_value_direct", MemoryHooks::istatus_get_value_direct);
    divert("istatus_get_intvalue_direct", MemoryHooks::istatus_get_intvalue_direct);
    divert("lstat", MemoryHooks::lstat);
    divert("genconfig_read_file", MemoryHooks::read_profile);
    divert("genconfig_set_value", MemoryHooks::set_value);
    divert("genconfig_set_intvalue", MemoryHooks::set_number);
    divert("genconfig_write_file", MemoryHooks::write_profile);
    divert("genconfig_set_value_direct", MemoryHooks::set_value_direct);
    divert("genconfig_set_intvalue_direct", MemoryHooks::set_number_direct);
    divert("genconfig_get_value_direct", MemoryHooks::get_value_direct);
    divert("iwconfig_client_get_essid", MemoryHooks::essid);
    divert("iwconfig_client_get_ap_mac", MemoryHooks::ap_mac);
}

MemoryBoard::~MemoryBoard() {
    hooks_.clear();
    std::fclose(nowhere_);
    current = nullptr;
}

int MemoryBoard::run(const char* command) {
    if (command == nullptr) std::abort();
    commands.emplace_back(command);
    return on_command ? on_command(command) : 0;
}

}  // namespace harness
