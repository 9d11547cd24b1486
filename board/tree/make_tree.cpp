#include "board/tree/make_tree.h"

#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "board/model/flash.h"
#include "board/model/interfaces.h"
#include "board/model/pins.h"
#include "board/store/store.h"

namespace board {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDirectories[] = {"bin",  "dev",     "etc_ro/wlan", "lib/firmware",
                                        "sbin", "usr/bin", "usr/sbin"};

// Mark of a whole board. A tree that an older one could not use gets the next number.
constexpr const char* kVersion = "virtual board, version 1\n";

constexpr const char* kAside = ".new";  // a tree that is being made

// Emptied by every start.
constexpr const char* kVolatileDirectories[] = {"sys", "tmp", "var/board", "var/run"};

constexpr const char* kToolPath = "/sbin/board-tool";

constexpr const char* kToolNames[] = {
    "bin/ated",           "bin/bndstrg",    "bin/rt2860apd", "bin/rtinicapd",   "sbin/brctl",
    "bin/ebtables",       "sbin/ifconfig",  "sbin/insmod",   "sbin/led_ctl",    "bin/ls",
    "sbin/switch",        "sbin/iptables",  "sbin/iwpriv",   "usr/bin/killall", "sbin/mtd",
    "sbin/restorebackup", "sbin/uboot_env",
};

// As the kernel has them once the drivers are loaded.
constexpr const char* kInterfaces[] = {"eth0", "ra0",  "ra1",  "ra2",    "ra3",    "rai0",
                                       "rai1", "rai2", "rai3", "apcli0", "apclii0"};

constexpr std::pair<const char*, const char*> kBootVariables[] = {
    {"bootdelay", "3"                },
    {"ethaddr",   "00:9f:33:10:20:30"},
    {"diag",      "0"                },
    {"ftm",       "off"              },
};

// Calibration data as far as anyone reads it: chip, version, MAC address.
struct Calibration {
    size_t offset;
    unsigned char head[10];
};
constexpr Calibration kCalibration[] = {
    {0x0000, {0x15, 0x76, 0x00, 0x05, 0x00, 0x9f, 0x33, 0x10, 0x20, 0x30}},
    {0x8000, {0x15, 0x76, 0x00, 0x05, 0x00, 0x9f, 0x33, 0x10, 0x20, 0x32}},
};

// The directory is the board's root for as long as this lives.
class RootScope {
public:
    explicit RootScope(const fs::path& directory) { set_root(directory); }
    ~RootScope() { set_root(before_); }
    RootScope(const RootScope&) = delete;
    RootScope& operator=(const RootScope&) = delete;

private:
    std::string before_ = root();
};

void require(bool done, const std::string& what) {
    if (!done) throw std::runtime_error("cannot " + what);
}

std::string boot_environment() {
    BootEnvironment environment;
    for (const auto& [name, value] : kBootVariables) environment.set(name, value);
    return environment.image();
}

std::string calibration_image(size_t size) {
    std::string image(size, '\0');
    for (const Calibration& radio : kCalibration)
        image.replace(radio.offset, sizeof radio.head, reinterpret_cast<const char*>(radio.head),
                      sizeof radio.head);
    return image;
}

std::string partition_content(const Partition& partition, FactoryData factory) {
    if (partition.name == "Config") return boot_environment();
    if (partition.name == "Factory")
        return factory == FactoryData::good ? calibration_image(partition.size)
                                            : std::string(partition.size, '\xff');
    return partition.name;  // never run, but recognisable
}

void make_flash(FactoryData factory) {
    constexpr size_t kDefaultImageSize = 0x10000;
    for (const Partition& partition : partitions())
        require(write_partition(partition, partition_content(partition, factory)),
                "write partition " + partition.name);
    require(write_text("/etc_ro/wlan/MT7615_EEPROM.bin", calibration_image(kDefaultImageSize)),
            "write the default calibration image");
}

void copy_in(const fs::path& source, const fs::path& directory) {
    const fs::path target = directory / source.relative_path();
    fs::create_directories(target.parent_path());
    fs::copy_file(source, target, fs::copy_options::overwrite_existing);
}

// The libraries of a program, as "ldd" lists their places.
std::vector<fs::path> libraries_of(const std::string& program) {
    const std::unique_ptr<FILE, int (*)(FILE*)> list(::popen(("ldd " + program).c_str(), "r"),
                                                     ::pclose);
    require(list != nullptr, "run ldd");
    std::vector<fs::path> libraries;
    char line[512];
    while (std::fgets(line, sizeof line, list.get()) != nullptr) {
        std::istringstream words(line);
        for (std::string word; words >> word;)
            if (word.starts_with('/')) libraries.emplace_back(word);
    }
    return libraries;
}

void install_shell(const fs::path& directory) {
    copy_in("/bin/sh", directory);
    for (const fs::path& library : libraries_of("/bin/sh")) copy_in(library, directory);
}

void install_tools(const fs::path& tool, const fs::path& directory) {
    fs::copy_file(tool, directory / fs::path(kToolPath).relative_path());
    for (const char* name : kToolNames) fs::create_symlink(kToolPath, directory / name);
}

void write_mark(const fs::path& directory, const std::string& text) {
    std::ofstream mark(directory / kMark, std::ios::trunc);
    mark << text;
    require(static_cast<bool>(mark.flush()), "write " + (directory / kMark).string());
}

void fill_tree(const fs::path& directory, const TreeParts& parts, FactoryData factory) {
    fs::copy(parts.image, directory, fs::copy_options::recursive);
    for (const char* name : kDirectories) fs::create_directories(directory / name);
    install_shell(directory);
    install_tools(parts.tool, directory);

    const RootScope scope(directory);
    require(write_text("/dev/null", ""), "write /dev/null");
    make_flash(factory);
    power_on(directory);
}

bool is_kept(const fs::path& name) {
    return name == kMark || name == kAside;
}

// A link on the way to it is removed, not followed.
void make_empty_directory(fs::path place, const fs::path& name) {
    for (const fs::path& part : name) {
        place /= part;
        if (fs::is_directory(fs::symlink_status(place))) continue;
        fs::remove(place);
        fs::create_directory(place);
    }
    for (const auto& entry : fs::directory_iterator(place)) fs::remove_all(entry.path());
}

// Of writes that were broken off; see replace_text().
void remove_unfinished_files(const fs::path& directory) {
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        if (entry.path().stem().extension() == kUnfinished) fs::remove(entry.path());
}

}  // namespace

Folder kind_of(const fs::path& directory) {
    const fs::path mark = directory / kMark;
    if (!fs::is_regular_file(fs::symlink_status(mark)))
        return fs::is_empty(directory) ? Folder::empty : Folder::foreign;
    std::ostringstream text;
    text << std::ifstream(mark).rdbuf();
    if (text.str().empty()) return Folder::unfinished;
    return text.str() == kVersion ? Folder::board : Folder::other_version;
}

void make_tree(const fs::path& directory, const TreeParts& parts, FactoryData factory) {
    const fs::path aside = directory / kAside;
    if (kind_of(directory) == Folder::empty) write_mark(directory, "");
    fs::remove_all(aside);
    fill_tree(aside, parts, factory);

    write_mark(directory, "");
    for (const auto& entry : fs::directory_iterator(directory))
        if (!is_kept(entry.path().filename())) fs::remove_all(entry.path());
    for (const auto& entry : fs::directory_iterator(aside))
        fs::rename(entry.path(), directory / entry.path().filename());
    fs::remove(aside);
    write_mark(directory, kVersion);
}

void power_on(const fs::path& directory) {
    fs::remove_all(directory / kAside);
    for (const char* name : kVolatileDirectories) make_empty_directory(directory, name);
    remove_unfinished_files(directory);
    const RootScope scope(directory);
    for (const char* name : kInterfaces) create_interface(name);
    make_pin_file();
    set_interface_up("eth0", true);  // the host's network start-up comes first
}

}  // namespace board
