#include "run/switch_section.h"

#include <cstdio>
#include <map>

#include "frame/host.h"
#include "host/state.h"
#include "live/switch.h"
#include "platform/switch.h"
#include "run/report.h"
#include "run/step.h"

namespace board::run {
namespace {

using Lines = std::vector<std::string>;
using Rows = std::vector<std::vector<std::string>>;

constexpr int kFirstWanPort = 0x10001;

// A user port and its switch port.
struct Port {
    int user_port;
    int switch_port;
    std::string name;  // "LAN 1"
};

Port port_of(const char* kind, int user_port, int number) {
    return {user_port, get_dev_port(&state().hw, user_port),
            std::string(kind) + ' ' + std::to_string(number)};
}

std::vector<Port> ports() {
    std::vector<Port> list;
    for (int i = 1; i <= state().hw.lan_port_count; ++i) list.push_back(port_of("LAN", i, i));
    for (int j = 1; j <= state().hw.wan_port_count; ++j)
        list.push_back(port_of("WAN", kFirstWanPort + j - 1, j));
    std::erase_if(list, [](const Port& port) { return port.switch_port == -1; });
    return list;
}

std::string link_text(const port_setting& link) {
    return std::string(link.mode) + ' ' + link.speed + ' ' + link.duplex;
}

std::string setting_text(const Port& port) {
    const auto row = state().port_settings.find(port.user_port);
    if (row == state().port_settings.end()) return "";
    const PortSetting& setting = row->second;
    return setting.mode + ' ' + setting.speed + ' ' + setting.duplex;
}

// The VLAN that a port's untagged traffic belongs to: the IPTV port goes with the WAN.
int vlan_of(const Port& port) {
    const bool iptv = state().iptv_config == 1 && port.user_port == state().hw.iptv_port;
    return iptv || port.user_port >= kFirstWanPort ? 2 : 1;
}

Lines set_up(const Platform& platform, Capture& capture) {
    const Step steps[] = {
        perform(capture, "init_ethernet_switch()", PLATFORM_CALL(platform, init_ethernet_switch)),
        perform(capture, "reinit_vlan()", PLATFORM_CALL(platform, reinit_vlan)),
        perform(capture, "init_portconfig()", PLATFORM_CALL(platform, init_portconfig)),
        perform(capture, "init_sniff_port()", PLATFORM_CALL(platform, init_sniff_port)),
    };
    Lines faults;
    const int results[] = {state().iptv_config == 1 ? 0 : state().iptv_config, 0, 0, 0};
    for (size_t i = 0; i < std::size(steps); ++i) {
        show(steps[i], 30);
        if (steps[i].result != results[i]) faults.push_back(steps[i].call + " failed");
    }
    return faults;
}

Lines show_vlans() {
    const Switch board_switch;
    std::map<int, std::string> members = {
        {1, "00000010"},
        {2, "00000100"}
    };
    Lines faults;
    Rows rows = {
        {"Port", "Switch port", "VLAN"}
    };
    for (const Port& port : ports()) {
        const int vlan = vlan_of(port);
        members[vlan][static_cast<size_t>(port.switch_port)] = '1';
        const std::string found = board_switch.setting("pvid." + std::to_string(port.switch_port));
        rows.push_back({port.name, std::to_string(port.switch_port), found});
        if (found != std::to_string(vlan)) faults.push_back(port.name + " is in the wrong VLAN");
    }
    heading("VLANs");
    table(rows);
    for (const auto& [vlan, map] : members) {
        const std::string number = std::to_string(vlan);
        const std::string found = board_switch.setting("vlan." + number);
        std::printf("  VLAN %d: %s\n", vlan, found.c_str());
        if (found != number + ' ' + map) faults.push_back("VLAN " + number + " is not " + map);
    }
    return faults;
}

// The monitor port is LAN 1, and the other LAN ports are copied to it both ways.
Lines show_mirror() {
    const Switch board_switch;
    Lines faults;
    heading("Port mirror");
    const std::string monitor = board_switch.setting("mirror.monitor");
    const bool on = state().sniff_port != 0;
    if (monitor != (on ? std::to_string(get_dev_port(&state().hw, 1)) : ""))
        faults.push_back("the mirror's monitor port is wrong");
    if (monitor.empty()) std::printf("  none\n");
    for (const Port& port : ports()) {
        if (monitor == std::to_string(port.switch_port))
            std::printf("  %s is the monitor port\n", port.name.c_str());
        const bool wanted = on && port.user_port > 1 && port.user_port < kFirstWanPort;
        const std::string target =
            board_switch.setting("mirror.target." + std::to_string(port.switch_port));
        if (!target.empty()) std::printf("  %s is copied\n", port.name.c_str());
        if (target != (wanted ? "3" : "")) faults.push_back(port.name + " is mirrored wrongly");
    }
    return faults;
}

// What the partner offers and the stored setting allows, as the library names it.
std::string expected_link(const Port& port) {
    const LinkPartner partner = Wiring::load().partners[static_cast<size_t>(port.switch_port)];
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
    const auto row = state().port_settings.find(port.user_port);
    const bool any = row == state().port_settings.end() || row->second.mode == "auto" ||
                     row->second.mode == "on" || row->second.mode == "off";
    bool allowed = any;
    for (const Mode& mode : kModes) {
        if (!any && row->second.speed + ' ' + row->second.duplex == mode.setting) allowed = true;
        const bool offered =
            (partner.abilities & mode.abilities) != 0 || (partner.gigabit & mode.gigabit) != 0;
        if (allowed && offered) return mode.link;
    }
    return "Off -- --";
}

struct PortReading {
    port_setting link{};
    port_counters counters{};
};

PortReading read_port(const Platform& platform, const Port& port) {
    PortReading reading;
    PLATFORM_CALL(platform, get_link_status)(port.user_port, &reading.link);
    PLATFORM_CALL(platform, get_eport_stat)(port.user_port, &reading.counters);
    return reading;
}

// Of the bytes received before the switch came up.
uint64_t high_bytes(const Port& port) {
    for (const CounterStart& counter : Wiring::load().counters)
        if (counter.port == port.switch_port && counter.offset == 0xAC) return counter.value;
    return 0;
}

bool is_mac_off(const Port& port) {
    const int offset = 0x3000 + port.switch_port * 0x100;
    return (Switch().read_register(static_cast<uint32_t>(offset)) & 0x8000) != 0;
}

Lines show_ports(const Platform& platform, Capture& capture) {
    Lines faults;
    Rows rows = {
        {"Port", "Stored setting", "Link", "Packets in", "Bytes in", "Packets out", "Bytes out"}
    };
    for (const Port& port : ports()) {
        capture.begin();
        const PortReading now = read_port(platform, port);
        const PortReading later = read_port(platform, port);
        PLATFORM_CALL(platform, clear_port_statistics)();
        const PortReading cleared = read_port(platform, port);
        for (const std::string& line : split_lines(capture.end()))
            faults.push_back(port.name + ": message \"" + line + '"');
        const port_counters& counters = now.counters;
        rows.push_back({port.name, setting_text(port), link_text(now.link),
                        std::to_string(counters.rx_packets), std::to_string(counters.rx_bytes),
                        std::to_string(counters.tx_packets), std::to_string(counters.tx_bytes)});
        if (link_text(now.link) != expected_link(port))
            faults.push_back(port.name + " has not the link " + expected_link(port));
        const bool off = setting_text(port).starts_with("off");
        if (off != is_mac_off(port)) faults.push_back(port.name + " is not switched as stored");
        const bool traffic = now.link.mode == std::string("On") && !off;
        if (traffic != (later.counters.rx_bytes > counters.rx_bytes))
            faults.push_back(port.name + " does not count as its link is");
        if (traffic && counters.rx_bytes >> 32 != high_bytes(port))
            faults.push_back(port.name + " has lost the high half of its bytes");
        if (traffic && cleared.counters.rx_bytes >= later.counters.rx_bytes)
            faults.push_back(port.name + " keeps its counters");
    }
    heading("Ethernet ports");
    table(rows);
    return faults;
}

std::string text_of(const uint8_t* mac) {
    char text[18];
    mactostr(mac, text, sizeof text);
    return text;
}

// The stations that the switch knows on LAN ports, in the order of its table.
std::map<std::string, int> expected_stations() {
    std::map<std::string, int> stations;
    for (const LearntAddress& address : load_stations()) {
        if (address.age == 0 || (address.mac[0] & 1) != 0) continue;
        for (const Port& port : ports()) {
            if ((address.port_map >> port.switch_port & 1) == 0) continue;
            if (port.user_port < kFirstWanPort)
                stations.emplace(text_of(address.mac.data()), port.user_port);
        }
    }
    return stations;
}

Lines show_stations(const Platform& platform) {
    wired_station_list list{};
    PLATFORM_CALL(platform, apcp_get_stalist_from_ethswitch)(&list);
    Rows rows = {
        {"Station", "Port", "Link"}
    };
    std::map<std::string, int> found;
    Lines faults;
    for (const wired_station* node = list.first; node != nullptr; node = node->next) {
        const std::string mac = text_of(node->mac);
        const bool link = PLATFORM_CALL(platform, ethswitch_get_mac_port_link)(mac.c_str()) != 0;
        rows.push_back({mac, "LAN " + std::to_string(node->user_port), link ? "yes" : "no"});
        found.emplace(mac, static_cast<int>(node->user_port));
    }
    free_all_list(&list, nullptr);
    heading("Wired stations");
    table(rows);
    if (found != expected_stations()) faults.push_back("the wired stations are not those there");
    if (found.empty()) return faults;

    const std::string first = found.begin()->first;
    PLATFORM_CALL(platform, ethswitch_del_mac)(first.c_str());
    if (PLATFORM_CALL(platform, ethswitch_search_mac_table)(first.c_str()) != 0)
        faults.push_back(first + " is still there after it was deleted");
    std::printf("  %s deleted\n", first.c_str());
    return faults;
}

}  // namespace

Lines start_switch(const Platform& platform, Capture& capture) {
    Lines faults = set_up(platform, capture);
    for (const Lines& more :
         {show_vlans(), show_mirror(), show_ports(platform, capture), show_stations(platform)})
        faults.insert(faults.end(), more.begin(), more.end());
    return faults;
}

}  // namespace board::run
