// What the Wi-Fi driver runs with: the profile that it loaded, the settings made at run time, the
// calibration words, a scan that takes its time. The radios are those of the index file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "live/key_file.h"

namespace board {

inline constexpr const char* kRadioIndexPath = "/etc/wireless/l1profile.dat";

// A value of the radio index file for the radio with this main interface, such as "profile_path".
std::optional<std::string> radio_index_value(std::string_view main_ifname, std::string_view key);

// The driver reads its profile when the radio's first interface comes up, and only then.
void load_driver_profile(std::string_view main_ifname);
std::optional<KeyFile> driver_profile(std::string_view main_ifname);

// Settings of "iwpriv IF set KEY=VALUE" and words of "iwpriv IF e2p OFFSET=VALUE".
void store_driver_setting(std::string_view ifname, std::string_view key, std::string_view value);
void store_eeprom_word(std::string_view ifname, std::string_view offset, std::string_view value);
KeyFile eeprom_words(std::string_view ifname);

// A scan reports itself as running for so many polls.
void start_scan(std::string_view ifname, int polls);
bool poll_scan(std::string_view ifname);  // true: still running

}  // namespace board
