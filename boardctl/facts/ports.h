// The Ethernet ports as the host numbers them.
#pragma once

#include <string>
#include <vector>

#include "boardctl/facts/host.h"

namespace boardctl {

inline constexpr int kFirstWanPort = 0x10001;

struct Port {
    int user_port = 0;
    int switch_port = 0;
    std::string name;  // "lan1"

    bool is_wan() const { return user_port >= kFirstWanPort; }
    std::string number() const { return std::to_string(switch_port); }
};

std::vector<Port> ports_of(const Session& session);                // those that are wired
Port named_port(const Session& session, const std::string& name);  // throws UsageError
std::string port_name(int user_port);

port_setting link_of(const Session& session, const Port& port);

// The host's stored setting: "auto 1000 full", empty when there is none.
std::string stored_setting(const Session& session, const Port& port);
std::string setting_text(const port_setting& setting);

port_counters counters_of(const Session& session, const Port& port);

}  // namespace boardctl
