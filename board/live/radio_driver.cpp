#include "live/radio_driver.h"

#include "live/tree.h"

namespace board {
namespace {

std::string driver_file(std::string_view ifname, std::string_view what) {
    return live_path("driver/" + std::string(ifname) + '.' + std::string(what));
}

}  // namespace

std::optional<std::string> radio_index_value(std::string_view main_ifname, std::string_view key) {
    const KeyFile index = KeyFile::load_or_empty(kRadioIndexPath);
    for (const char* radio : {"INDEX0_", "INDEX1_"})
        if (index.get(std::string(radio) + "main_ifname") == main_ifname)
            return index.get(radio + std::string(key));
    return std::nullopt;
}

void load_driver_profile(std::string_view main_ifname) {
    const auto path = radio_index_value(main_ifname, "profile_path");
    if (!path) return;
    replace_text(driver_file(main_ifname, "profile"), read_text(*path).value_or(""));
}

std::optional<KeyFile> driver_profile(std::string_view main_ifname) {
    return KeyFile::load(driver_file(main_ifname, "profile"));
}

void store_driver_setting(std::string_view ifname, std::string_view key, std::string_view value) {
    const std::string path = driver_file(ifname, "set");
    KeyFile settings = KeyFile::load_or_empty(path);
    if (key == "IgmpAdd")  // the driver collects the groups
        settings.append(key, value);
    else
        settings.set(key, value);
    settings.save(path);
}

void store_eeprom_word(std::string_view ifname, std::string_view offset, std::string_view value) {
    const std::string path = driver_file(ifname, "e2p");
    KeyFile words = KeyFile::load_or_empty(path);
    words.set(offset, value);
    words.save(path);
}

KeyFile eeprom_words(std::string_view ifname) {
    return KeyFile::load_or_empty(driver_file(ifname, "e2p"));
}

void start_scan(std::string_view ifname, int polls) {
    replace_text(driver_file(ifname, "scan"), std::to_string(polls));
}

bool poll_scan(std::string_view ifname) {
    const int left = std::stoi(read_text(driver_file(ifname, "scan")).value_or("0"));
    if (left <= 0) return false;
    start_scan(ifname, left - 1);
    return true;
}

}  // namespace board
