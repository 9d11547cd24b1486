// Radios and BSSs of the state by interface name.
#pragma once

#include <string_view>

#include "board/host/state.h"

namespace board {

inline constexpr int kUnknownRadio = -1;

// The wl mode of a main, BSS or repeater-client interface.
int wl_mode_of(std::string_view ifname);

Radio* find_radio(int wl_mode);              // null: no such radio
Radio* find_radio(std::string_view ifname);  // null: not an interface of a radio

// The BSS number of an interface; 0 for the main interface and the repeater client.
int bss_number(const Radio& radio, std::string_view ifname);
bool is_client(const Radio& radio, std::string_view ifname);

inline bool uses_8021x(const wireless_conf& record) {
    return record.auth_mode == WIRELESS_AUTH_WPA || record.auth_mode == WIRELESS_AUTH_WPA2 ||
           record.auth_mode == WIRELESS_AUTH_WPA1WPA2;
}

}  // namespace board
