// The radios, their networks and interfaces, as the host and the index file know them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "boardctl/session.h"
#include "boardctl/verb.h"
#include "platform/records.h"

namespace boardctl {

struct Radio {
    int wl_mode = 0;
    std::string main_ifname;
    std::string client_ifname;
    std::string profile_path;
};

// In the order of the host's list.
std::vector<Radio> radios_of(const Session& session);

// The one that an argument names by any of its interfaces, or all when it is not given. Throws
// UsageError.
std::vector<Radio> named_radios(const Session& session, const Arguments& arguments);
Radio named_radio(const Session& session, const std::string& ifname);

// The number, in a wl index, of the network that a radio joins as a client.
inline constexpr uint32_t kClientNetwork = 4096;

// A driver takes its profile when the radio's first interface comes up.
bool is_running(const Session& session, const Radio& radio);

// A network by its interface, such as ra1.
struct Network {
    Radio radio;
    int number = 0;
    std::string ifname;

    uint32_t wl_index() const {
        return (static_cast<uint32_t>(radio.wl_mode) << 16) + static_cast<uint32_t>(number);
    }
};
Network named_network(const Session& session, const std::string& ifname);
std::string network_ifname(const Session& session, uint32_t wl_index);  // empty: none

// The networks that are configured, with their records.
std::vector<wireless_conf> records_of(const Session& session, const Radio& radio);
std::vector<Network> networks_of(const Session& session, const Radio& radio);

// A text of a record, which may fill its field.
template <size_t kSize>
std::string field_text(const char (&field)[kSize]) {
    const std::string_view text(field, kSize);
    return std::string(text.substr(0, text.find('\0')));
}

}  // namespace boardctl
