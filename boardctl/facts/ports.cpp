#include "boardctl/facts/ports.h"

#include "boardctl/nearest.h"

namespace boardctl {

std::string port_name(int user_port) {
    const bool is_wan = user_port >= kFirstWanPort;
    return (is_wan ? "wan" : "lan") +
           std::to_string(is_wan ? user_port - kFirstWanPort + 1 : user_port);
}

std::vector<Port> ports_of(const Session& session) {
    const hw_info hw = hardware_of(session);
    std::vector<Port> ports;
    const auto add = [&](int first, int count) {
        for (int user_port = first; user_port < first + count; ++user_port) {
            const int switch_port = session.host.get_dev_port(&hw, user_port);
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

port_setting link_of(const Session& session, const Port& port) {
    port_setting link{};
    session.platform.get_link_status(port.user_port, &link);
    return link;
}

std::string stored_setting(const Session& session, const Port& port) {
    char block[512] = {};  // the host's record goes on behind ours
    session.host.read_portconfig(port.user_port, block);
    const auto& setting = reinterpret_cast<const port_setting&>(block);
    return setting.mode[0] == '\0' ? "" : setting_text(setting);
}

std::string setting_text(const port_setting& setting) {
    return field_text(setting.mode) + ' ' + field_text(setting.speed) + ' ' +
           field_text(setting.duplex);
}

port_counters counters_of(const Session& session, const Port& port) {
    struct {
        port_counters known;
        char rest[512];  // the host's record goes on
    } record{};
    session.platform.get_eport_stat(port.user_port, &record.known);
    return record.known;
}

}  // namespace boardctl
