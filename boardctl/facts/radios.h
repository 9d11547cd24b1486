// The radios, their networks and interfaces, as the host and the library know them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "boardctl/facts/host.h"
#include "boardctl/verb.h"

namespace boardctl {

struct Radio {
    int wl_mode = 0;
    std::string main_ifname;
    std::string client_ifname;
    std::string profile_path;
    std::vector<std::string> network_ifnames;  // also of networks that are not configured

    uint32_t wl_index(uint32_t number) const {
        return (static_cast<uint32_t>(wl_mode) << 16) + number;
    }
};

// In the order of the host's list.
std::vector<Radio> radios_of(const Session& session);

// The one that an argument names by any of its interfaces, or all when it is not given. Throws
// UsageError.
inline constexpr Option kRadio = {"IFNAME", Kind::required, "an interface of the radio"};
inline constexpr Option kRadioOrAll = {"IFNAME", Kind::positional,
                                       "an interface of the radio; all when not given"};
std::vector<Radio> named_radios(const Session& session, const Arguments& arguments);
Radio named_radio(const Session& session, const std::string& ifname);

// The number, in a wl index, of the network that a radio joins as a client.
inline constexpr uint32_t kClientNetwork = 4096;

// A driver takes its profile when the radio's first interface comes up.
bool is_running(const Radio& radio);

struct Network {
    Radio radio;
    uint32_t number = 0;
    std::string ifname;  // such as ra1
    wireless_conf record{};

    uint32_t wl_index() const { return radio.wl_index(number); }
};

Network named_network(const Session& session, const std::string& ifname);      // without its record
std::vector<Network> networks_of(const Session& session, const Radio& radio);  // as configured

// Lists that the library fills. Throw Failed when it does not answer.
std::unique_ptr<station_list> station_list_of(Session& session, const Radio& radio);
std::unique_ptr<ap_list> survey_of(Session& session, const Radio& radio);

// Who may join a network: 0 all, 1 not the listed, 2 only the listed.
struct AccessFilter {
    int policy = 0;
    std::vector<std::string> addresses;  // those in force
};
AccessFilter access_filter_of(const Session& session, uint32_t wl_index);

// The host's number for a policy of the driver's and the driver's for the host's; -1 for none.
int other_policy(int policy);

// Where a radio's calibration data begins in the partition, and whether it is there.
size_t calibration_place(const Radio& radio);
inline constexpr size_t kCalibrationHead = 4;  // bytes that tell data from none
bool is_calibration(std::string_view head);

}  // namespace boardctl
