// The networks in reach of the radios, from /etc/neighbours.conf of the board's tree.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "board/store/configuration.h"

namespace board {

struct Neighbour {
    std::string radio;  // that hears it, by its main interface
    int channel = 0;
    std::string bssid;     // "00:11:22:33:44:55"
    std::string security;  // as the driver prints it: "WPA2PSK/AES", "NONE"
    int rssi_dbm = 0;
    std::string mode;       // "11b/g/n"
    std::string extension;  // "ABOVE", "BELOW", "NONE"
    std::string wps;        // "PBC", "PIN", "NO"
    std::string ssid;       // any bytes; empty when hidden
    std::string element;    // vendor element in hexadecimal, empty for none
    std::string name;       // the element's text
};

Complaints load_neighbours(std::vector<Neighbour>& neighbours);
std::vector<Neighbour> neighbours_of(std::string_view main_ifname);

// What the driver says of its last survey: a table in columns of fixed width.
std::string survey_table(const std::vector<Neighbour>& neighbours);

// The access point that a radio's repeater client is on: the strongest one that fits the profile
// which the driver runs with. Nothing while the client's interface is down.
std::optional<Neighbour> upstream_of(std::string_view ifname);

}  // namespace board
