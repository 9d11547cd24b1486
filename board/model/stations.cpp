#include "board/model/stations.h"

#include <algorithm>
#include <cctype>
#include <limits>

#include "board/model/interfaces.h"
#include "board/model/neighbours.h"
#include "board/model/radio_driver.h"
#include "board/store/store.h"
#include "board/store/words.h"

namespace board {
namespace {

constexpr int kAllowListed = 1;
constexpr int kDenyListed = 2;

using Words = std::span<const std::string>;

StationFile station_file() {
    StationFile file;
    load_station_file(file);
    return file;
}

bool is_admitted(const Station& station) {
    const AccessControl control = access_control(station.ifname);
    const auto& listed = control.addresses;
    const bool is_listed = std::find(listed.begin(), listed.end(), station.mac) != listed.end();
    if (control.policy == kAllowListed) return is_listed;
    return control.policy != kDenyListed || !is_listed;
}

// "-45/-47": of one to four receive chains.
bool is_rssi(std::string_view text) {
    int chains = 0;
    for (size_t end = 0; end != std::string_view::npos; text.remove_prefix(end + 1), ++chains) {
        end = text.find('/');
        if (!number_within(text.substr(0, end), -128, 0)) return false;
        if (end == std::string_view::npos) break;
    }
    return chains < 4;
}

bool is_network(std::string_view ifname) {
    const auto radio = radio_names(ifname);
    return radio && ifname != radio->client && network_number(ifname) < 4;
}

// INTERFACE ADDRESS AID SENT RECEIVED SECONDS RECEIVED SENT RSSI
bool take_station(Words words, StationFile& file) {
    constexpr int kLastAid = 2007;
    if (words.size() != 9 || !is_network(words[0]) || !to_mac(words[1])) return false;
    Station station;
    station.ifname = words[0];
    station.mac = words[1];
    for (char& digit : station.mac)  // as access lists have them
        digit = static_cast<char>(std::toupper(static_cast<unsigned char>(digit)));
    int* const numbers[] = {&station.aid, &station.sent_mbps, &station.received_mbps,
                            &station.seconds};
    size_t next = 2;
    for (int* const number : numbers) {
        const auto value = number_within(words[next++], 0, std::numeric_limits<int>::max());
        if (!value) return false;
        *number = *value;
    }
    const auto received = to_number<uint64_t>(words[6]);
    const auto sent = to_number<uint64_t>(words[7]);
    if (!received || !sent || !is_rssi(words[8])) return false;
    station.received_bytes = *received;
    station.sent_bytes = *sent;
    station.rssi_dbm = words[8];
    file.stations.push_back(station);
    return station.aid >= 1 && station.aid <= kLastAid;
}

// RADIO old|V2
bool take_table(Words words, StationFile& file) {
    if (words.size() != 2 || !is_radio(words[0])) return false;
    if (words[1] == "V2") file.new_tables.push_back(words[0]);
    return words[1] == "V2" || words[1] == "old";
}

// RADIO LINE
bool take_statistics(Words words, StationFile& file) {
    if (words.size() != 2 || !is_radio(words[0])) return false;
    file.statistics.push_back({words[0], words[1]});
    return words[1].find('=') != std::string::npos;
}

constexpr struct {
    std::string_view kind;
    bool (*take)(Words words, StationFile& file);
} kKinds[] = {
    {"station",    take_station   },
    {"statistics", take_statistics},
    {"table",      take_table     },
};

bool has_new_table(const std::string& main_ifname) {
    const auto radios = station_file().new_tables;
    return std::find(radios.begin(), radios.end(), main_ifname) != radios.end();
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

Complaints load_station_file(StationFile& file) {
    const auto take = [&file](Words words) {
        for (const auto& [kind, take_line] : kKinds)
            if (kind == words[0]) return take_line(words.subspan(1), file);
        return false;
    };
    return read_configuration("/etc/stations.conf", take);
}

std::vector<Station> stations_of(std::string_view main_ifname) {
    std::vector<Station> stations;
    for (Station& station : station_file().stations) {
        if (radio_of(station.ifname) != main_ifname || !interface_is_up(station.ifname) ||
            !is_admitted(station))
            continue;
        if (driver_setting(station.ifname, "ResetCounter"))
            station.received_bytes = station.sent_bytes = 0;
        stations.push_back(station);
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
    for (const auto& [owner, line] : station_file().statistics)
        if (owner == radio) text += line + '\n';
    if (const auto upstream = upstream_of(ifname))
        text += "Ap Client Status=1," + std::to_string(upstream->rssi_dbm) + '\n';
    return text;
}

}  // namespace board
