#include "board/model/radio_driver.h"

#include <algorithm>

#include "board/model/interfaces.h"
#include "board/model/neighbours.h"
#include "board/store/store.h"
#include "board/store/words.h"

namespace board {
namespace {

std::string driver_file(std::string_view ifname, std::string_view what) {
    return live_path("driver/" + std::string(ifname) + '.' + std::string(what));
}

// "rai2" with the prefix "rai" is 2.
std::optional<int> number_after(std::string_view prefix, std::string_view ifname) {
    if (prefix.empty() || !ifname.starts_with(prefix)) return std::nullopt;
    return to_number<int>(ifname.substr(prefix.size()));
}

void append_addresses(std::vector<std::string>& addresses, std::string_view list) {
    while (!list.empty()) {
        const size_t end = std::min(list.find(';'), list.size());
        if (end > 0) addresses.emplace_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
}

int scan_polls_left(std::string_view ifname) {
    return to_number<int>(read_text(driver_file(ifname, "scan")).value_or("")).value_or(0);
}

// What a network's profile says by the number of the network, counted from 0 or from 1.
std::string network_value(std::string_view ifname, const char* key, int first) {
    const auto profile = driver_profile(radio_of(ifname));
    const std::string name = key + std::to_string(network_number(ifname) + first);
    return profile ? profile->get(name).value_or("") : "";
}

// Settings that the profile's values take the place of.
void forget_settings(const RadioNames& radio) {
    for (int number = 0; number < 4; ++number) {
        const std::string path = driver_file(radio.network_prefix + std::to_string(number), "set");
        auto settings = KeyFile::load(path);
        if (!settings) continue;
        for (const char* key : {"SSID", "AccessPolicy", "ACLClearAll", "ACLAddEntry"})
            settings->remove(key);
        settings->save(path);
    }
}

}  // namespace

std::optional<RadioNames> radio_names(std::string_view ifname) {
    const KeyFile index = KeyFile::load_or_empty(kRadioIndexPath);
    for (const std::string radio : {"INDEX0_", "INDEX1_"}) {
        const RadioNames names = {index.get(radio + "main_ifname").value_or(""),
                                  index.get(radio + "ext_ifname").value_or(""),
                                  index.get(radio + "apcli_ifname").value_or("") + '0'};
        if (ifname == names.main || ifname == names.client ||
            number_after(names.network_prefix, ifname))
            return names;
    }
    return std::nullopt;
}

bool is_radio(std::string_view ifname) {
    const auto radio = radio_names(ifname);
    return radio && radio->main == ifname;
}

std::string radio_of(std::string_view ifname) {
    const auto radio = radio_names(ifname);
    return radio ? radio->main : std::string(ifname);
}

int network_number(std::string_view ifname) {
    const auto radio = radio_names(ifname);
    return radio ? number_after(radio->network_prefix, ifname).value_or(0) : 0;
}

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
    if (const auto radio = radio_names(main_ifname)) forget_settings(*radio);
}

std::optional<KeyFile> driver_profile(std::string_view main_ifname) {
    return KeyFile::load(driver_file(main_ifname, "profile"));
}

void store_driver_setting(std::string_view ifname, std::string_view key, std::string_view value) {
    const std::string path = driver_file(ifname, "set");
    KeyFile settings = KeyFile::load_or_empty(path);
    if (key == "ACLClearAll") settings.remove("ACLAddEntry");
    if (key == "IgmpAdd" || key == "ACLAddEntry")  // the driver collects groups and addresses
        settings.append(key, value);
    else
        settings.set(key, value);
    settings.save(path);
}

std::optional<std::string> driver_setting(std::string_view ifname, std::string_view key) {
    return KeyFile::load_or_empty(driver_file(ifname, "set")).get(key);
}

AccessControl access_control(std::string_view ifname) {
    AccessControl control;
    const KeyFile settings = KeyFile::load_or_empty(driver_file(ifname, "set"));
    const auto set_policy = settings.get("AccessPolicy");
    const std::string policy = set_policy.value_or(network_value(ifname, "AccessPolicy", 0));
    control.policy = to_number<int>(policy).value_or(0);
    if (!settings.get("ACLClearAll"))
        append_addresses(control.addresses, network_value(ifname, "AccessControlList", 0));
    for (const std::string& line : settings.lines())
        if (const auto pair = split_key_value(line); pair && pair->key == "ACLAddEntry")
            append_addresses(control.addresses, pair->value);
    return control;
}

std::optional<std::string> announced_ssid(std::string_view ifname) {
    if (const auto set = driver_setting(ifname, "SSID")) return set;
    const std::string ssid = network_value(ifname, "SSID", 1);
    return ssid.empty() ? std::nullopt : std::optional(ssid);
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
    const int left = scan_polls_left(ifname);
    if (left <= 0) return false;
    start_scan(ifname, left - 1);
    return true;
}

bool start_survey(std::string_view ifname) {
    constexpr int kPolls = 3;
    if (!interface_is_up(ifname)) return false;
    const std::string radio = radio_of(ifname);
    start_scan(radio, kPolls);
    return replace_text(driver_file(radio, "survey"), survey_table(neighbours_of(radio)));
}

std::optional<std::string> finished_survey(std::string_view ifname) {
    const std::string radio = radio_of(ifname);
    if (scan_polls_left(radio) > 0) return std::nullopt;
    return read_text(driver_file(radio, "survey"));
}

}  // namespace board
