// Which networks are in reach.
#include <algorithm>
#include <cstdio>
#include <memory>
#include <span>

#include "frame/host.h"
#include "host/radio.h"
#include "live/journal.h"
#include "live/neighbours.h"
#include "platform/platform.h"
#include "run/radio_section.h"
#include "run/report.h"

namespace board::run {
namespace {

constexpr const char* kAuthWords[] = {
    "", "open",     "WEP",  "",         "WPA",          "WPA-PSK",
    "", "WPA-None", "WPA2", "WPA2-PSK", "WPA/WPA2-PSK", "WPA/WPA2"};
constexpr const char* kCipherWords[] = {"none", "WEP", "", "TKIP", "AES", "TKIP+AES"};

std::string word_of(std::span<const char* const> words, int32_t code) {
    const auto index = static_cast<size_t>(code);
    return code >= 0 && index < words.size() ? words[index] : std::to_string(code);
}

std::vector<std::string> survey_row(const ap_entry& entry) {
    const bool pushed = (entry.flags & AP_FLAG_WPS_PUSH_BUTTON) != 0;
    std::string vendor = entry.element.text;
    vendor.erase(vendor.find_last_not_of(' ') + 1);
    return {entry.ssid[0] == '\0' ? "(hidden)" : quote(entry.ssid),
            quote(entry.bssid),
            number(entry.channel.channel),
            number(entry.channel.frequency_mhz),
            number(entry.signal),
            number(entry.rssi),
            word_of(kAuthWords, entry.auth_mode),
            word_of(kCipherWords, entry.encryption),
            pushed ? "button" : "-",
            vendor.empty() ? "-" : quote(vendor)};
}

// Networks on channels that the country does not allow are left out.
void check_survey(Faults& faults, const std::string& name, const ap_list& list) {
    Faults wanted;
    for (const Neighbour& each : neighbours_of(name))
        if (wireless_check_channel_valid(name.c_str(), 0, 20, each.channel) != 0)
            wanted.push_back(each.bssid + ' ' + quote(each.ssid) + ' ' + number(each.rssi_dbm) +
                             (each.wps == "PBC" ? " button" : ""));
    Faults found;
    for (uint32_t i = 0; i < list.count; ++i) {
        const ap_entry& entry = list.entries[i];
        const bool pushed = (entry.flags & AP_FLAG_WPS_PUSH_BUTTON) != 0;
        found.push_back(std::string(entry.bssid) + ' ' + quote(entry.ssid) + ' ' +
                        number(entry.rssi) + (pushed ? " button" : ""));
    }
    require(faults, found == wanted,
            "the survey of " + name + " lists " + joined(found) + " instead of " + joined(wanted));
}

}  // namespace

std::vector<std::string> survey_networks(const Platform& platform, Steps& steps, int wl_mode) {
    Faults faults;
    const std::string& name = find_radio(wl_mode)->main_ifname;
    const auto list = std::make_unique<ap_list>();
    std::snprintf(list->ifname, sizeof list->ifname, "%s", name.c_str());
    const auto start = PLATFORM_CALL(platform, wireless_api_start_ap_scan);
    const auto wait = PLATFORM_CALL(platform, wireless_api_wait_scan_end);
    const auto get = PLATFORM_CALL(platform, platform_wireless_api_get_ap_list);
    steps.step("wireless_api_start_ap_scan(\"" + name + "\")", [&] { return start(name.c_str()); });
    const int waited = steps.step("wireless_api_wait_scan_end(\"" + name + "\")",
                                  [&] { return wait(name.c_str()); });
    const int result = steps.step("platform_wireless_api_get_ap_list(\"" + name + "\")",
                                  [&] { return get(list.get()); });
    require(faults, waited == 0 && result == 0, "the survey of " + name + " did not end well");
    check_survey(faults, name, *list);

    Rows rows = {
        {"SSID", "BSSID", "Channel", "MHz", "Signal", "dBm", "Auth", "Cipher", "WPS", "Vendor"}
    };
    for (uint32_t i = 0; i < list->count; ++i) rows.push_back(survey_row(list->entries[i]));
    heading("Networks in reach of " + name);
    table(rows);
    return faults;
}

}  // namespace board::run
