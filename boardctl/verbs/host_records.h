// What the host tells of the board, in the forms that verbs and checks use.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "boardctl/session.h"
#include "platform/records.h"

namespace boardctl {

hw_info hardware_of(const Session& session);  // throws Failed

std::string address_text(const Session& session, const uint8_t* mac);

// An argument that is the address of one station, as address_text() writes it; throws UsageError.
std::string station_address(const Session& session, const char* argument, const std::string& mac);

// Who may join a network: 0 all, 1 not the listed, 2 only the listed.
struct AccessFilter {
    int policy = 0;
    std::vector<std::string> addresses;  // those in force
};
AccessFilter access_filter_of(const Session& session, uint32_t wl_index);

// The driver's number for a policy of the host's, and back; -1 for none.
int driver_policy(int policy);
int host_policy(int driver_policy);

// The switch's register that shows what the port LEDs were told, as the virtual board keeps it.
std::string port_led_register(const Session& session);

bool is_led_lit(int pin);

port_counters counters_of(const Session& session, int user_port);

}  // namespace boardctl
