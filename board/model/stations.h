// The stations on the radios' networks, from /etc/stations.conf of the board's tree, and what the
// driver tells about them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "board/store/configuration.h"

namespace board {

struct Station {
    std::string ifname;
    std::string mac;  // "00:11:22:33:44:55"
    int aid = 0;
    int sent_mbps = 0;
    int received_mbps = 0;
    int seconds = 0;  // since its association
    uint64_t received_bytes = 0;
    uint64_t sent_bytes = 0;
    std::string rssi_dbm;  // of each chain: "-45/-47"
};

// What /etc/stations.conf says.
struct StationFile {
    std::vector<Station> stations;
    std::vector<std::string> new_tables;                 // radios whose table has the form V2
    std::vector<std::array<std::string, 2>> statistics;  // a radio and a line of its statistics
};
Complaints load_station_file(StationFile& file);

// Those that are associated: their network is up and lets them in.
std::vector<Station> stations_of(std::string_view main_ifname);

// The answers of "iwpriv IF get_mac_table" and "iwpriv IF stat".
std::string station_table(std::string_view ifname);
std::string driver_statistics(std::string_view ifname);

}  // namespace board
