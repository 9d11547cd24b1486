#include "live/switch_wiring.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "live/tree.h"

namespace board {
namespace {

constexpr const char* kPath = "/etc/switch.conf";
constexpr std::string_view kStation = "station ";

constexpr struct {
    std::string_view name;
    uint16_t abilities;
    uint16_t gigabit;
} kModes[] = {
    {"1000/full", 0,      0x0800},
    {"1000/half", 0,      0x0400},
    {"100/full",  0x0100, 0     },
    {"100/half",  0x0080, 0     },
    {"10/full",   0x0040, 0     },
    {"10/half",   0x0020, 0     },
};

bool add_mode(LinkPartner& partner, std::string_view name) {
    for (const auto& mode : kModes) {
        if (mode.name != name) continue;
        partner.abilities = static_cast<uint16_t>(partner.abilities | mode.abilities);
        partner.gigabit = static_cast<uint16_t>(partner.gigabit | mode.gigabit);
        return true;
    }
    return false;
}

bool read_port(std::istringstream& words, int& port) {
    return words >> port && port >= 0 && port < kSwitchPorts;
}

bool load_partner(std::istringstream& words, Wiring& wiring) {
    int port = 0;
    if (!read_port(words, port)) return false;
    for (std::string mode; words >> mode;)
        if (!add_mode(wiring.partners[static_cast<size_t>(port)], mode)) return false;
    return true;
}

bool load_counter(std::istringstream& words, Wiring& wiring) {
    CounterStart counter;
    if (!read_port(words, counter.port)) return false;
    if (!(words >> std::hex >> counter.offset >> counter.value)) return false;
    wiring.counters.push_back(counter);
    return true;
}

bool load_negotiation(std::istringstream& words, Wiring& wiring) {
    return static_cast<bool>(words >> wiring.negotiation_polls);
}

bool load_busy(std::istringstream& words, Wiring& wiring) {
    return words >> wiring.busy_polls >> wiring.busy_every && wiring.busy_every > 0;
}

constexpr struct {
    std::string_view name;
    bool (*load)(std::istringstream& words, Wiring& wiring);
} kLines[] = {
    {"busy",        load_busy       },
    {"counter",     load_counter    },
    {"negotiation", load_negotiation},
    {"port",        load_partner    },
};

void complain(const std::string& line) {
    std::fprintf(stderr, "switch.conf: not understood: %s\n", line.c_str());
}

bool load_line(const std::string& line, Wiring& wiring) {
    std::istringstream words(line.substr(0, line.find('#')));
    std::string name;
    if (!(words >> name)) return true;
    for (const auto& row : kLines)
        if (row.name == name) return row.load(words, wiring);
    return false;
}

// "0" or "0,2" as a map of ports.
bool parse_ports(const std::string& text, uint8_t& map) {
    std::istringstream ports(text);
    for (std::string word; std::getline(ports, word, ',');) {
        if (word.size() != 1 || word[0] < '0' || word[0] >= '0' + kSwitchPorts) return false;
        map = static_cast<uint8_t>(map | 1 << (word[0] - '0'));
    }
    return true;
}

}  // namespace

Wiring Wiring::load() {
    Wiring wiring;
    for (const std::string& line : read_lines(kPath))
        if (!line.starts_with(kStation) && !load_line(line, wiring)) complain(line);
    return wiring;
}

std::vector<LearntAddress> load_stations() {
    std::vector<LearntAddress> stations;
    for (const std::string& line : read_lines(kPath)) {
        if (!line.starts_with(kStation)) continue;
        LearntAddress address;
        if (stations.size() < kAddressTable && parse_address(line.substr(kStation.size()), address))
            stations.push_back(address);
        else
            complain(line);
    }
    return stations;
}

std::string address_line(const LearntAddress& address) {
    char text[64];
    const auto& mac = address.mac;
    std::snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x ", mac[0], mac[1], mac[2],
                  mac[3], mac[4], mac[5]);
    std::string line = text;
    for (int port = 0; port < kSwitchPorts; ++port)
        if ((address.port_map >> port & 1) != 0) line += std::to_string(port) + ',';
    line.back() = ' ';
    return line + std::to_string(address.age);
}

bool parse_address(const std::string& line, LearntAddress& address) {
    unsigned mac[6];
    char ports[16];
    unsigned age = 0;
    if (std::sscanf(line.c_str(), "%2x:%2x:%2x:%2x:%2x:%2x %15s %u", &mac[0], &mac[1], &mac[2],
                    &mac[3], &mac[4], &mac[5], ports, &age) != 8)
        return false;
    LearntAddress parsed;
    std::transform(std::begin(mac), std::end(mac), parsed.mac.begin(),
                   [](unsigned byte) { return static_cast<uint8_t>(byte); });
    parsed.age = static_cast<uint8_t>(age);
    if (age > 0xFF || !parse_ports(ports, parsed.port_map) || parsed.port_map == 0) return false;
    address = parsed;
    return true;
}

}  // namespace board
