#include "board/model/neighbours.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "board/model/interfaces.h"
#include "board/model/radio_driver.h"
#include "board/store/store.h"
#include "board/store/words.h"

namespace board {
namespace {

constexpr size_t kColumns = 9;
constexpr size_t kColumnsWithElement = 11;

std::string column(std::string text, size_t width) {
    text.resize(width, ' ');
    return text;
}

int signal_percent(int rssi_dbm) {
    return std::clamp((rssi_dbm + 90) * 5 / 2, 0, 100);
}

bool is_element(std::string_view digits) {
    constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
    return digits.size() == 32 && digits.find_first_not_of(kDigits) == std::string::npos;
}

// Texts are no wider than their columns in the driver's table.
std::optional<Neighbour> to_neighbour(std::span<const std::string> words) {
    if (words.size() != kColumns && words.size() != kColumnsWithElement) return std::nullopt;
    const auto channel = number_within(words[1], 1, 196);
    const auto rssi = number_within(words[4], -128, 0);
    if (!is_radio(words[0]) || !channel || !to_mac(words[2]) || words[3].size() > 22 || !rssi ||
        words[5].size() > 11 || !is_one_of(words[6], {"ABOVE", "BELOW", "NONE"}) ||
        !is_one_of(words[7], {"PBC", "PIN", "NO"}) || words[8].size() > 32)
        return std::nullopt;
    Neighbour neighbour{words[0], *channel, words[2], words[3], *rssi, words[5],
                        words[6], words[7], words[8], "",       ""};
    if (words.size() == kColumns) return neighbour;
    if (!is_element(words[9]) || words[10].size() > 16) return std::nullopt;
    neighbour.element = words[9];
    neighbour.name = words[10];
    return neighbour;
}

// An SSID may hold any byte, but a line of the table only one line.
std::string on_one_line(std::string ssid) {
    for (char& c : ssid)
        if (c == '\0' || c == '\n') c = '.';
    return ssid;
}

std::string element_columns(const Neighbour& neighbour) {
    if (neighbour.element.empty()) return "NO";
    const std::string digits = column(neighbour.element, 32);
    return "YES " + digits.substr(0, 8) + ' ' + digits.substr(8, 12) + ' ' + digits.substr(20, 12) +
           ' ' + column(neighbour.name, 16);
}

std::string survey_line(const Neighbour& neighbour) {
    const std::string signal = std::to_string(signal_percent(neighbour.rssi_dbm)) + '(' +
                               std::to_string(neighbour.rssi_dbm) + ')';
    const std::string wps = neighbour.wps == "NO" ? "NO" : "YES " + neighbour.wps;
    return column(std::to_string(neighbour.channel), 4) + column(on_one_line(neighbour.ssid), 32) +
           ' ' + column(neighbour.bssid, 20) + column(neighbour.security, 23) + column(signal, 11) +
           column(neighbour.mode, 12) + column(neighbour.extension, 7) + column("Infra", 7) +
           column(wps, 8) + element_columns(neighbour) + '\n';
}

bool fits(const Neighbour& neighbour, const KeyFile& profile) {
    const auto value = [&](const char* key) { return profile.get(key).value_or(""); };
    const std::string security = value("ApCliAuthMode") + '/' + value("ApCliEncrypType");
    const std::string bssid = value("ApCliBssid");
    return neighbour.ssid == value("ApCliSsid") && (bssid.empty() || bssid == neighbour.bssid) &&
           security == (neighbour.security == "NONE" ? "OPEN/NONE" : neighbour.security);
}

bool is_weaker(const Neighbour& a, const Neighbour& b) {
    return a.rssi_dbm < b.rssi_dbm;
}

}  // namespace

Complaints load_neighbours(std::vector<Neighbour>& neighbours) {
    const auto take = [&neighbours](std::span<const std::string> words) {
        const auto neighbour = to_neighbour(words);
        if (neighbour) neighbours.push_back(*neighbour);
        return neighbour.has_value();
    };
    return read_configuration("/etc/neighbours.conf", take);
}

std::vector<Neighbour> neighbours_of(std::string_view main_ifname) {
    std::vector<Neighbour> neighbours;
    load_neighbours(neighbours);
    std::erase_if(neighbours, [&](const Neighbour& each) { return each.radio != main_ifname; });
    return neighbours;
}

std::string survey_table(const std::vector<Neighbour>& neighbours) {
    std::string text = column("Ch", 4) + column("SSID", 33) + column("BSSID", 20) +
                       column("Security", 23) + column("Signal", 11) + column("W-Mode", 12) +
                       column("ExtCH", 7) + column("NT", 7) + column("WPS", 8) + "Vendor\n";
    for (const Neighbour& neighbour : neighbours) text += survey_line(neighbour);
    return text;
}

std::optional<Neighbour> upstream_of(std::string_view ifname) {
    const auto radio = radio_names(ifname);
    if (!radio || !interface_is_up(radio->client)) return std::nullopt;
    const auto profile = driver_profile(radio->main);
    if (!profile || profile->get("ApCliEnable") != "1") return std::nullopt;
    auto candidates = neighbours_of(radio->main);
    std::erase_if(candidates, [&](const Neighbour& each) { return !fits(each, *profile); });
    const auto best = std::max_element(candidates.begin(), candidates.end(), is_weaker);
    if (best == candidates.end()) return std::nullopt;
    return *best;
}

}  // namespace board
