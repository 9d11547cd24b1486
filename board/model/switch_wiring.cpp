#include "board/model/switch_wiring.h"

#include <cstdio>
#include <optional>

#include "board/store/store.h"
#include "board/store/words.h"

namespace board {
namespace {

using Words = std::span<const std::string>;

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

std::optional<int> port_number(std::string_view word, int ports) {
    return number_within(word, 0, ports - 1);
}

bool load_partner(Words words, Wiring& wiring) {
    const auto port = words.size() > 1 ? port_number(words[0], kPhyPorts) : std::nullopt;
    if (!port) return false;
    for (const std::string& mode : words.subspan(1))
        if (!add_mode(wiring.partners[static_cast<size_t>(*port)], mode)) return false;
    return true;
}

bool load_counter(Words words, Wiring& wiring) {
    if (words.size() != 3) return false;
    const auto port = port_number(words[0], kSwitchPorts);
    const auto offset = number_within<uint32_t>(words[1], 0, 0xfc, 16);
    const auto value = to_number<uint32_t>(words[2], 16);
    if (!port || !offset || *offset % 4 != 0 || !value) return false;
    wiring.counters.push_back({*port, *offset, *value});
    return true;
}

bool load_negotiation(Words words, Wiring& wiring) {
    const auto polls = words.size() == 1 ? to_number<uint32_t>(words[0]) : std::nullopt;
    wiring.negotiation_polls = polls.value_or(0);
    return polls.has_value();
}

bool load_busy(Words words, Wiring& wiring) {
    if (words.size() != 2) return false;
    const auto polls = to_number<uint32_t>(words[0]);
    const auto every = to_number<uint32_t>(words[1]);
    if (!polls || every.value_or(0) == 0) return false;
    wiring.busy_polls = *polls;
    wiring.busy_every = *every;
    return true;
}

bool load_station(Words words, Wiring& wiring) {
    LearntAddress address;
    if (wiring.stations.size() == kAddressTable || !parse_address(words, address)) return false;
    wiring.stations.push_back(address);
    return true;
}

constexpr struct {
    std::string_view name;
    bool (*load)(Words words, Wiring& wiring);
} kLines[] = {
    {"busy",        load_busy       },
    {"counter",     load_counter    },
    {"negotiation", load_negotiation},
    {"port",        load_partner    },
    {"station",     load_station    },
};

// "0" or "0,2" as a map of ports; nothing for a text that is none.
uint8_t parse_ports(std::string_view text) {
    int map = 0;
    for (bool ended = false; !ended;) {
        const size_t comma = text.find(',');
        const auto port = port_number(text.substr(0, comma), kSwitchPorts);
        if (!port) return 0;
        map |= 1 << *port;
        ended = comma == std::string_view::npos;
        if (!ended) text.remove_prefix(comma + 1);
    }
    return static_cast<uint8_t>(map);
}

}  // namespace

Complaints load_wiring(Wiring& wiring) {
    const auto take = [&wiring](Words words) {
        for (const auto& [name, load] : kLines)
            if (name == words[0]) return load(words.subspan(1), wiring);
        return false;
    };
    return read_configuration("/etc/switch.conf", take);
}

Wiring Wiring::load() {
    Wiring wiring;
    load_wiring(wiring);
    return wiring;
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

bool parse_address(Words words, LearntAddress& address) {
    if (words.size() != 3) return false;
    const auto mac = to_mac(words[0]);
    const uint8_t port_map = parse_ports(words[1]);
    const auto age = to_number<uint8_t>(words[2]);
    if (!mac || port_map == 0 || !age) return false;
    address = {*mac, port_map, *age};
    return true;
}

}  // namespace board
