#include "live/stations.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "live/interfaces.h"
#include "live/neighbours.h"
#include "live/radio_driver.h"
#include "live/tree.h"
#include "live/words.h"

namespace board {
namespace {

constexpr const char* kStationsPath = "/etc/stations.conf";
constexpr int kAllowListed = 1;
constexpr int kDenyListed = 2;

using Line = std::vector<std::string>;

// The lines of one kind: "station IF ...", "table IF ...", "statistics IF ...".
std::vector<Line> lines_of(std::string_view kind) {
    std::vector<Line> lines;
    for (const std::string& text : read_lines(kStationsPath)) {
        auto words = split_words(text);
        if (words && words->size() > 2 && words->front() == kind) lines.push_back(*words);
    }
    return lines;
}

bool is_admitted(const Station& station) {
    const AccessControl control = access_control(station.ifname);
    const auto& listed = control.addresses;
    const bool is_listed = std::find(listed.begin(), listed.end(), station.mac) != listed.end();
    if (control.policy == kAllowListed) return is_listed;
    return control.policy != kDenyListed || !is_listed;
}

Station to_station(const Line& words) {
    Station station;
    station.ifname = words[1];
    station.mac = words[2];
    int* const numbers[] = {&station.aid, &station.sent_mbps, &station.received_mbps,
                            &station.seconds};
    size_t next = 3;
    for (int* const number : numbers) *number = to_number<int>(words[next++]).value_or(0);
    if (!driver_setting(station.ifname, "ResetCounter")) {
        station.received_bytes = to_number<uint64_t>(words[next]).value_or(0);
        station.sent_bytes = to_number<uint64_t>(words[next + 1]).value_or(0);
    }
    station.rssi_dbm = words[next + 2];
    return station;
}

bool has_new_table(std::string_view main_ifname) {
    for (const Line& words : lines_of("table"))
        if (words[1] == main_ifname) return words[2] == "V2";
    return false;
}

std::string bare_digits(const std::string& mac) {
    std::string digits;
    for (const char c : mac)
        if (c != ':') digits += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return digits;
}

std::string station_line(const Station& station, const std::string& network, bool new_table) {
    constexpr uint64_t kPacketBytes = 1024;  // the old table counts packets
    const uint64_t unit = new_table ? 1 : kPacketBytes;
    std::string line = bare_digits(station.mac) + "  " + network;
    for (const int number :
         {station.aid, 0, 1, station.sent_mbps, station.received_mbps, station.seconds})
        line += "  " + std::to_string(number);
    for (const uint64_t bytes : {station.received_bytes, station.sent_bytes})
        line += "  " + std::to_string(bytes / unit);
    return line + (new_table ? "  " + station.rssi_dbm : "") + '\n';
}

Station upstream_station(const Neighbour& neighbour) {
    Station station;
    station.mac = neighbour.bssid;
    station.aid = 1;
    station.rssi_dbm = std::to_string(neighbour.rssi_dbm);
    return station;
}

}  // namespace

std::vector<Station> stations_of(std::string_view main_ifname) {
    constexpr size_t kWords = 10;
    std::vector<Station> stations;
    for (const Line& words : lines_of("station")) {
        if (words.size() != kWords || radio_of(words[1]) != main_ifname) continue;
        const Station station = to_station(words);
        if (interface_is_up(station.ifname) && is_admitted(station)) stations.push_back(station);
    }
    return stations;
}

std::string station_table(std::string_view ifname) {
    const std::string radio = radio_of(ifname);
    const bool new_table = has_new_table(radio);
    std::string text = std::string(ifname) + "  get_mac_table:\n" + (new_table ? "V2 " : "") +
                       "MAC AP AID PSM AUTH TX RX TIME " +
                       (new_table ? "RXBYTES TXBYTES RSSI\n" : "RXPKTS TXPKTS\n");
    for (const Station& station : stations_of(radio))
        text += station_line(station, std::to_string(network_number(station.ifname)), new_table);
    if (const auto upstream = upstream_of(radio))
        text += station_line(upstream_station(*upstream), "C0", new_table);
    return text;
}

std::string driver_statistics(std::string_view ifname) {
    const std::string radio = radio_of(ifname);
    std::string text = std::string(ifname) + "  stat:\n";
    text += "Tx power percent=" + driver_setting(ifname, "TxPower").value_or("100") + '\n';
    for (const Line& words : lines_of("statistics"))
        if (words[1] == radio) text += words[2] + '\n';
    if (const auto upstream = upstream_of(ifname))
        text += "Ap Client Status=1," + std::to_string(upstream->rssi_dbm) + '\n';
    return text;
}

}  // namespace board
