// Whether the board came up as its configuration says.
#pragma once

#include <string>
#include <vector>

#include "live/key_file.h"

namespace board::run {

// A BSS and the name of the interface that carries it.
struct BssPlace {
    int wl_mode;
    int number;
    std::string ifname;
};
BssPlace place_of(int wl_mode, int number);

std::string profile_path(int wl_mode);

// SSID and hidden flag of a BSS as a profile has them.
struct Announced {
    std::string ssid;
    bool hidden;
};
Announced announced(const KeyFile& profile, int number);

// What is wrong, in sentences; nothing when all is well. The helper network of a router that was
// never configured lasts until its radio's configuration is applied.
std::vector<std::string> faults_of_board(bool helper);
std::vector<std::string> faults_of_change(const BssPlace& bss);

}  // namespace board::run
