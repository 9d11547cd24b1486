// Checks of the Ethernet switch and its ports.
#include <map>

#include "board/model/switch.h"
#include "board/model/switch_wiring.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "board/store/words.h"
#include "boardctl/checks/checks.h"
#include "boardctl/facts/ports.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

using board::Switch;

// The VLAN that a port's untagged traffic belongs to: the IPTV port goes with the WAN.
int vlan_of(const Session& session, const Port& port) {
    const bool is_iptv =
        session.host.get_iptv_config() == 1 && port.user_port == hardware_of(session).iptv_port;
    return is_iptv || port.is_wan() ? 2 : 1;
}

// How registers 4 and 10 show a mode, the best one first.
struct Mode {
    const char* setting;
    uint16_t abilities, gigabit;
    const char* link;
};
constexpr Mode kModes[] = {
    {"1000 full", 0,      0x0800, "On 1G Full" },
    {"1000 half", 0,      0x0400, "On 1G Half" },
    {"100 full",  0x0100, 0,      "On 100 Full"},
    {"100 half",  0x0080, 0,      "On 100 Half"},
    {"10 full",   0x0040, 0,      "On 10 Full" },
    {"10 half",   0x0020, 0,      "On 10 Half" },
};
constexpr Mode kNoMode = {"", 0, 0, "Off -- --"};

const Mode& best_mode(const board::LinkPartner& offer) {
    for (const Mode& mode : kModes)
        if (((mode.abilities & offer.abilities) | (mode.gigabit & offer.gigabit)) != 0) return mode;
    return kNoMode;
}

board::LinkPartner advertised(const Port& port) {
    constexpr int kAdvertisement = 4;
    constexpr int kGigabitControl = 9;  // its bits are those of register 10, two places lower
    Switch board_switch;
    return {board_switch.read_phy(port.switch_port, kAdvertisement),
            static_cast<uint16_t>(board_switch.read_phy(port.switch_port, kGigabitControl) << 2)};
}

// What both ends advertise, as the library names it.
std::string expected_link(const Port& port) {
    const auto partner = board::Wiring::load().partners[static_cast<size_t>(port.switch_port)];
    const auto ours = advertised(port);
    return best_mode({static_cast<uint16_t>(ours.abilities & partner.abilities),
                      static_cast<uint16_t>(ours.gigabit & partner.gigabit)})
        .link;
}

std::string link_text(const Session& session, const Port& port) {
    return setting_text(link_of(session, port));
}

uint64_t received_bytes(const Session& session, const Port& port) {
    return counters_of(session, port).rx_bytes;
}

bool is_mac_off(const Port& port) {
    const int offset = 0x3000 + port.switch_port * 0x100;
    return (Switch().read_register(static_cast<uint32_t>(offset)) & 0x8000) != 0;
}

bool has_traffic(const Session& session, const Port& port) {
    return link_text(session, port).starts_with("On ") && !is_mac_off(port);
}

// "on" and "off" leave what is advertised as it was, a fixed speed leaves the MAC.
void check_setting(Faults& faults, const Port& port, const std::string& stored) {
    const std::string best = best_mode(advertised(port)).setting;
    const bool is_auto = stored.starts_with("auto ");
    const bool is_switched =
        is_auto ? !is_mac_off(port)
                : !stored.starts_with("o") || stored.starts_with("off ") == is_mac_off(port);
    const bool is_advertised =
        is_auto ? best == "1000 full" : !stored.starts_with("fixed ") || stored == "fixed " + best;
    faults.require(is_switched && is_advertised, port.name + " is not switched as stored");
}

std::vector<board::LearntAddress> learnt_addresses() {
    std::vector<board::LearntAddress> addresses;
    const std::string file = board::live_path("switch.addresses");
    if (!board::path_exists(file)) return board::Wiring::load().stations;
    for (const std::string& line : board::read_lines(file))
        board::parse_address(*board::split_words(line), addresses.emplace_back());
    return addresses;
}

using Stations = std::map<std::string, int>;  // address, LAN port

Stations stations_there(const Session& session) {
    const auto ports = ports_of(session);
    Stations stations;
    for (const board::LearntAddress& address : learnt_addresses()) {
        if (address.age == 0 || (address.mac[0] & 1) != 0) continue;
        for (const Port& port : ports)
            if ((address.port_map >> port.switch_port & 1) != 0 && !port.is_wan())
                stations.emplace(address_text(session, address.mac.data()), port.user_port);
    }
    return stations;
}

}  // namespace

void check_vlans(Session& session, Faults& faults) {
    const Switch board_switch;
    std::map<int, std::string> members = {
        {1, "00000010"},
        {2, "00000100"}
    };
    for (const Port& port : ports_of(session)) {
        const int vlan = vlan_of(session, port);
        members[vlan][static_cast<size_t>(port.switch_port)] = '1';
        const std::string found = board_switch.setting("pvid." + port.number());
        faults.require(found == std::to_string(vlan), port.name + " is in the wrong VLAN");
    }
    for (const auto& [vlan, map] : members) {
        const std::string number = std::to_string(vlan);
        faults.require(board_switch.setting("vlan." + number) == number + ' ' + map,
                       "VLAN " + number + " is not " + map);
    }
}

// The other LAN ports are copied to the monitor port both ways. The library's own note says which
// port that is: a start takes LAN 1 whatever is stored. A port that was a source before it became
// the monitor may stay one, for it is never copied to itself.
void check_mirror(Session& session, Faults& faults) {
    const Switch board_switch;
    const auto noted =
        board::KeyFile::load_or_empty(board::live_path("iconfig")).get("port_mirror");
    const int stored = board::to_number<int>(noted.value_or("")).value_or(0);
    const std::string monitor = board_switch.setting("mirror.monitor");
    for (const Port& port : ports_of(session)) {
        const bool is_monitor = stored != 0 && port.user_port == stored;
        faults.require(
            is_monitor == (monitor == port.number()),
            port.name + (is_monitor ? " is not the monitor port" : " is the monitor port"));
        const bool is_copied = stored != 0 && !port.is_wan();
        faults.require(is_monitor || board_switch.setting("mirror.target." + port.number()) ==
                                         (is_copied ? "3" : ""),
                       port.name + " is mirrored wrongly");
    }
}

void check_ports(Session& session, Faults& faults) {
    for (const Port& port : ports_of(session)) {
        const std::string expected = expected_link(port);
        faults.require(link_text(session, port) == expected,
                       port.name + " has not the link " + expected);
        check_setting(faults, port, stored_setting(session, port));
        const uint64_t now = received_bytes(session, port);
        const bool counts = received_bytes(session, port) > now;
        faults.require(counts == has_traffic(session, port),
                       port.name + " does not count as its link is");
    }
}

// Also what was received before the switch came up, which is more than 32 bits.
void check_counters(Session& session, Faults& faults) {
    for (const board::CounterStart& start : board::Wiring::load().counters)
        for (const Port& port : ports_of(session)) {
            if (start.port != port.switch_port || start.offset != 0xac) continue;
            const auto high = static_cast<uint32_t>(0x4000 + port.switch_port * 0x100 + 0xac);
            faults.require(received_bytes(session, port) >> 32 == Switch().read_register(high),
                           port.name + " has lost the high half of its bytes");
        }
    std::map<int, uint64_t> before;
    for (const Port& port : ports_of(session))
        before[port.user_port] = received_bytes(session, port);
    session.platform.clear_port_statistics();
    for (const Port& port : ports_of(session))
        faults.require(
            !has_traffic(session, port) || received_bytes(session, port) < before[port.user_port],
            port.name + " keeps its counters");
}

void check_wired(Session& session, Faults& faults) {
    wired_station_list list{};
    session.platform.apcp_get_stalist_from_ethswitch(&list);
    Stations found;
    for (const wired_station* node = list.first; node != nullptr; node = node->next)
        found.emplace(address_text(session, node->mac), static_cast<int>(node->user_port));
    session.host.free_all_list(&list, nullptr);
    faults.require(found == stations_there(session),
                   "the wired stations are not those that are there");
}

}  // namespace boardctl
