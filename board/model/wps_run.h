// Wi-Fi Protected Setup as the driver of each interface runs it: armed by WscConfMode=7, started by
// WscGetConf=1, then further with every query until it is done, or failed when it was stopped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "board/store/configuration.h"

namespace board {

// Takes note of a setting that was just stored, if it is one of WPS.
void take_wps_setting(std::string_view ifname, std::string_view key, std::string_view value);

enum WpsStatus : uint32_t {
    kWpsOff = 0,
    kWpsArmed = 1,
    kWpsFailed = 2,
    kWpsStarted = 3,
    kWpsConfigured = 34,
};
uint32_t poll_wps(std::string_view ifname);
bool has_wps_peer(std::string_view ifname);  // a run has met one

// The texts of the device at the other end, from /etc/wps_peer.conf, in the order of the driver's
// record, each with the width of its field there.
struct WpsPeerText {
    std::string_view key;
    size_t width;
    std::string text;
};
std::vector<WpsPeerText> wps_peer();
Complaints load_wps_peer(std::vector<WpsPeerText>& texts);

uint32_t wps_pin(std::string_view ifname);

// 16 bytes.
std::string wps_uuid(std::string_view ifname);
void set_wps_uuid(std::string_view ifname, std::string_view bytes);

}  // namespace board
