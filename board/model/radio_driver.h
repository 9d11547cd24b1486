// What the Wi-Fi driver runs with: the profile that it loaded, the settings made at run time, the
// calibration words, a scan that takes its time, its survey. The radios are those of the index
// file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "board/store/key_file.h"

namespace board {

inline constexpr const char* kRadioIndexPath = "/etc/wireless/l1profile.dat";

// A value of the radio index file for the radio with this main interface, such as "profile_path".
std::optional<std::string> radio_index_value(std::string_view main_ifname, std::string_view key);

struct RadioNames {
    std::string main;
    std::string network_prefix;  // "ra": network 1 is ra1
    std::string client;          // "apcli0"
};

bool is_radio(std::string_view ifname);  // its main interface

// The radio that a main, network or repeater-client interface belongs to.
std::optional<RadioNames> radio_names(std::string_view ifname);
std::string radio_of(std::string_view ifname);  // its main interface; the name itself of no radio's
int network_number(std::string_view ifname);    // of ra1: 1

// The driver reads its profile when the radio's first interface comes up, and only then.
void load_driver_profile(std::string_view main_ifname);
std::optional<KeyFile> driver_profile(std::string_view main_ifname);

// Settings of "iwpriv IF set KEY=VALUE" and words of "iwpriv IF e2p OFFSET=VALUE". A profile that
// is loaded takes the place of earlier settings of the same matter.
void store_driver_setting(std::string_view ifname, std::string_view key, std::string_view value);
std::optional<std::string> driver_setting(std::string_view ifname, std::string_view key);
void store_eeprom_word(std::string_view ifname, std::string_view offset, std::string_view value);
KeyFile eeprom_words(std::string_view ifname);

// Whom a network lets in: the settings made at run time over those of the profile.
struct AccessControl {
    int policy = 0;  // the driver's: 0 off, 1 only the listed, 2 not the listed
    std::vector<std::string> addresses;
};
AccessControl access_control(std::string_view ifname);

// The SSID that the driver announces for a network; nothing when its profile names none.
std::optional<std::string> announced_ssid(std::string_view ifname);

// A scan reports itself as running for so many polls.
void start_scan(std::string_view ifname, int polls);
bool poll_scan(std::string_view ifname);  // true: still running

// A survey is a scan that leaves a table of the networks in reach. There is none before the first
// one has ended.
bool start_survey(std::string_view ifname);  // false: the interface is down
std::optional<std::string> finished_survey(std::string_view ifname);

}  // namespace board
