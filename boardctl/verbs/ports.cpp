// The Ethernet ports: link, counters, settings, mirror.
#include "boardctl/facts/ports.h"
#include "board/model/switch.h"
#include "boardctl/verb.h"

namespace boardctl {
namespace {

std::vector<Port> named_ports(const Session& session, const Arguments& arguments) {
    if (!arguments.has("PORT")) return ports_of(session);
    return {named_port(session, arguments.text("PORT"))};
}

Outcome link(Session& session, const Arguments& arguments) {
    Json rows = Json::array();
    for (const Port& port : named_ports(session, arguments)) {
        const port_setting now = link_of(session, port);
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
    if (arguments.has("--clear")) session.platform.clear_port_statistics();
    Json rows = Json::array();
    for (const Port& port : named_ports(session, arguments)) {
        const port_counters now = counters_of(session, port);
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

void set(Session& session, const Port& port, const Arguments& arguments) {
    port_setting setting{};
    const std::string mode = arguments.text("MODE");
    const std::string speed = arguments.text("SPEED", "-");
    const std::string duplex = arguments.text("DUPLEX", "-");
    if (mode == "fixed" && (speed == "-" || duplex == "-"))
        throw UsageError("fixed goes with a speed (1000, 100 or 10) and a duplex (full or half)");
    set_text(setting.mode, mode);
    set_text(setting.speed, speed);
    set_text(setting.duplex, duplex);
    const Step step = session.perform(session.platform.set_port_config, port.user_port, &setting);
    if (step.result != 0) throw Failed("the switch does not take the setting");
    if (!session.store("port " + std::to_string(port.user_port) + ' ' + setting_text(setting)))
        throw Failed("the host does not store the setting");
}

Outcome config(Session& session, const Arguments& arguments) {
    if (arguments.has("MODE")) set(session, named_port(session, arguments.text("PORT")), arguments);
    return link(session, arguments);
}

Outcome mirror(Session& session, const Arguments& arguments) {
    if (arguments.has("MONITOR")) {
        const std::string monitor = arguments.text("MONITOR");
        const int user_port = monitor == "off" ? 0 : named_port(session, monitor).user_port;
        session.perform(session.platform.set_sniff_port, user_port);
        session.store("set sniff_port " + std::to_string(user_port));
    }
    const int stored = session.host.get_sniff_port();
    Json answer = {{"stored_monitor", if_known(stored != 0, port_name(stored))}};
    if (!session.is_virtual) return {answer};
    const board::Switch board_switch;
    const std::string monitor = board_switch.setting("mirror.monitor");
    answer["monitor"] = Json();
    answer["copied"] = Json::array();
    for (const Port& port : ports_of(session)) {
        if (monitor == port.number())
            answer["monitor"] = port.name;
        else if (!board_switch.setting("mirror.target." + port.number()).empty())
            answer["copied"].push_back(port.name);
    }
    return {answer};
}

constexpr Option kPort = {"PORT", Kind::positional, "such as lan1 or wan1; all when not given"};

}  // namespace

Verbs port_verbs() {
    return {
        Verb("ports link*", "Link, speed and duplex of the Ethernet ports.",
             "ports\nports link lan1 --json", link, {kPort}),
        Verb("ports counters", "What the ports have counted.",
             "ports counters\nports counters --clear", counters,
             {kPort, {"--clear", Kind::flag, "clear the counters of all ports first"}}),
        Verb("ports config", "Shows or sets how a port is to link.",
             "ports config lan3 fixed 100 full\nports config lan4 off", config,
             {kPort,
              {"MODE", Kind::positional, "on, off, auto or fixed", "on|off|auto|fixed"},
              {"SPEED", Kind::positional, "1000, 100 or 10", "1000|100|10|-"},
              {"DUPLEX", Kind::positional, "full or half", "full|half|-"}}),
        Verb("ports mirror", "Shows or sets the port to which the other LAN ports are copied.",
             "ports mirror\nports mirror lan1\nports mirror off", mirror,
             {{"MONITOR", Kind::positional, "a port, or off"}}),
    };
}

}  // namespace boardctl
