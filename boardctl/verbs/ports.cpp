// The Ethernet ports: link, counters, settings, mirror.
#include <cstdio>
#include <vector>

#include "board/host/entry.h"
#include "board/model/switch.h"
#include "boardctl/nearest.h"
#include "boardctl/verbs/host_records.h"
#include "boardctl/verbs/port_names.h"
#include "boardctl/verbs/radio_names.h"
#include "platform/switch.h"
#include "src/host/host.h"

namespace boardctl {
namespace {

std::vector<Port> named_ports(const Session& session, const Arguments& arguments) {
    if (!arguments.has("PORT")) return ports_of(session);
    return {named_port(session, arguments.text("PORT"))};
}

Outcome link(Session& session, const Arguments& arguments) {
    Json rows = Json::array();
    for (const Port& port : named_ports(session, arguments)) {
        port_setting now{};
        PLATFORM_CALL(session.library, get_link_status)(port.user_port, &now);
        rows.push_back({{"port", port.name},
                        {"switch_port", port.switch_port},
                        {"link", field_text(now.mode)},
                        {"speed", field_text(now.speed)},
                        {"duplex", field_text(now.duplex)},
                        {"stored", stored_setting(session, port)}});
    }
    return {{{"ports", rows}}};
}

Outcome counters(Session& session, const Arguments& arguments) {
    if (arguments.has("--clear")) PLATFORM_CALL(session.library, clear_port_statistics)();
    Json rows = Json::array();
    for (const Port& port : named_ports(session, arguments)) {
        const port_counters now = counters_of(session, port.user_port);
        rows.push_back({{"port", port.name},
                        {"rx_packets", now.rx_packets},
                        {"rx_bytes", now.rx_bytes},
                        {"rx_broadcast", now.rx_broadcast},
                        {"rx_multicast", now.rx_multicast},
                        {"rx_dropped", now.rx_dropped},
                        {"rx_crc_errors", now.rx_crc_errors},
                        {"tx_packets", now.tx_packets},
                        {"tx_bytes", now.tx_bytes},
                        {"tx_broadcast", now.tx_broadcast},
                        {"tx_multicast", now.tx_multicast},
                        {"tx_collisions", now.tx_collisions}});
    }
    return {{{"counters", rows}}};
}

void put(char (&field)[10], const std::string& text) {
    std::snprintf(field, sizeof field, "%s", text.c_str());
}

void set(Session& session, const Port& port, const Arguments& arguments) {
    port_setting setting{};
    const std::string mode = arguments.text("MODE");
    const std::string speed = arguments.text("SPEED", "-");
    const std::string duplex = arguments.text("DUPLEX", "-");
    if (mode == "fixed" && (speed == "-" || duplex == "-"))
        throw UsageError("fixed goes with a speed (1000, 100 or 10) and a duplex (full or half)");
    put(setting.mode, mode);
    put(setting.speed, speed);
    put(setting.duplex, duplex);
    const Step step = session.perform("set_port_config", [&] {
        return PLATFORM_CALL(session.library, set_port_config)(port.user_port, &setting);
    });
    if (step.result != 0) throw Failed("the switch does not take the setting");
    if (!session.is_virtual) return;
    const std::string line =
        "port " + std::to_string(port.user_port) + ' ' + mode + ' ' + speed + ' ' + duplex;
    if (HOST_CALL(session.library, board_set_state)(line.c_str()) != 0)
        throw Failed("the host does not store the setting");
}

Outcome config(Session& session, const Arguments& arguments) {
    if (arguments.has("MODE")) set(session, named_port(session, arguments.text("PORT")), arguments);
    return link(session, arguments);
}

void mirror_to(Session& session, const std::string& monitor) {
    const int user_port = monitor == "off" ? 0 : named_port(session, monitor).user_port;
    session.perform("set_sniff_port",
                    [&] { return PLATFORM_CALL(session.library, set_sniff_port)(user_port); });
    if (!session.is_virtual) return;
    const std::string line = "set sniff_port " + std::to_string(user_port);
    HOST_CALL(session.library, board_set_state)(line.c_str());
}

Outcome mirror(Session& session, const Arguments& arguments) {
    if (arguments.has("MONITOR")) mirror_to(session, arguments.text("MONITOR"));
    const int stored = HOST_CALL(session.library, get_sniff_port)();
    Json answer = {{"stored_monitor", stored == 0 ? Json() : Json(port_name(stored))}};
    if (!session.is_virtual) return {answer};
    const board::Switch board_switch;
    const std::string monitor = board_switch.setting("mirror.monitor");
    answer["monitor"] = Json();
    answer["copied"] = Json::array();
    for (const Port& port : ports_of(session)) {
        const std::string number = std::to_string(port.switch_port);
        if (monitor == number) answer["monitor"] = port.name;
        if (monitor != number && !board_switch.setting("mirror.target." + number).empty())
            answer["copied"].push_back(port.name);
    }
    return {answer};
}

constexpr Option kPort = {"PORT", Kind::positional, "such as lan1 or wan1; all when not given"};

constexpr Option kLinkOptions[] = {
    kPort,
};
constexpr Option kCountersOptions[] = {
    kPort,
    {"--clear", Kind::flag, "clear the counters of all ports first"},
};
constexpr Option kConfigOptions[] = {
    kPort,
    {"MODE", Kind::positional, "on, off, auto or fixed", {}, "on|off|auto|fixed"},
    {"SPEED", Kind::positional, "1000, 100 or 10", {}, "1000|100|10|-"},
    {"DUPLEX", Kind::positional, "full or half", {}, "full|half|-"},
};
constexpr Option kMirrorOptions[] = {
    {"MONITOR", Kind::positional, "a port, or off"},
};

}  // namespace

std::string port_name(int user_port) {
    const bool is_wan = user_port >= kFirstWanPort;
    return (is_wan ? "wan" : "lan") +
           std::to_string(is_wan ? user_port - kFirstWanPort + 1 : user_port);
}

std::vector<Port> ports_of(const Session& session) {
    const Library& library = session.library;
    const hw_info hw = hardware_of(session);
    std::vector<Port> ports;
    const auto add = [&](int first, int count) {
        for (int user_port = first; user_port < first + count; ++user_port) {
            const int switch_port = HOST_CALL(library, get_dev_port)(&hw, user_port);
            if (switch_port != -1) ports.push_back({user_port, switch_port, port_name(user_port)});
        }
    };
    add(1, hw.lan_port_count);
    add(kFirstWanPort, hw.wan_port_count);
    return ports;
}

Port named_port(const Session& session, const std::string& name) {
    std::vector<std::string> names;
    for (const Port& port : ports_of(session)) {
        if (name == port.name || name == std::to_string(port.user_port)) return port;
        names.push_back(port.name);
    }
    throw UsageError("a port is " + alternatives(names) + ", not " + name);
}

std::string stored_setting(const Session& session, const Port& port) {
    char block[512] = {};  // the host's record goes on behind ours
    HOST_CALL(session.library, read_portconfig)(port.user_port, block);
    const auto& setting = reinterpret_cast<const port_setting&>(block);
    if (setting.mode[0] == '\0') return "";
    return field_text(setting.mode) + ' ' + field_text(setting.speed) + ' ' +
           field_text(setting.duplex);
}

std::span<const Verb> port_verbs() {
    static const Verb kVerbs[] = {
        {"ports", "link", "Link, speed and duplex of the Ethernet ports.",
         "  boardctl ports\n  boardctl ports link lan1 --json", link, kLinkOptions, true},
        {"ports", "counters", "What the ports have counted.",
         "  boardctl ports counters\n  boardctl ports counters --clear", counters,
         kCountersOptions},
        {"ports", "config", "Shows or sets how a port is to link.",
         "  boardctl ports config lan3 fixed 100 full\n  boardctl ports config lan4 off", config,
         kConfigOptions},
        {"ports", "mirror", "Shows or sets the port to which the other LAN ports are copied.",
         "  boardctl ports mirror\n  boardctl ports mirror lan1\n  boardctl ports mirror off",
         mirror, kMirrorOptions},
    };
    return kVerbs;
}

}  // namespace boardctl
