// Channels, LEDs, band steering and the state of a running radio.
#include <algorithm>
#include <optional>

#include "board/host/radio.h"
#include "board/model/interfaces.h"
#include "board/model/neighbours.h"
#include "board/model/pins.h"
#include "board/model/radio_driver.h"
#include "board/store/journal.h"
#include "src/host/host.h"

using board::find_radio;
using board::Radio;
using board::state;

namespace {

constexpr int kLast2GHzChannel = 14;

board::ClientLink link_to(const board::Neighbour& upstream, const wireless_conf& settings) {
    board::ClientLink link;
    link.ssid = upstream.ssid;
    link.ap_mac = upstream.bssid;
    const bool is_2ghz = upstream.channel <= kLast2GHzChannel;
    const int above = upstream.extension == "ABOVE" ? 4 : 0;
    const int below = upstream.extension == "BELOW" ? 4 : 0;
    link.channel = {upstream.channel, upstream.channel + above - below,
                    (is_2ghz ? 2407 : 5000) + 5 * upstream.channel, 0, settings.bandwidth};
    link.speed_mbps = is_2ghz ? 144 : 866;
    return link;
}

// The link of a repeater-client interface: the state's, else the one that its driver has found.
std::optional<board::ClientLink> link_of(const char* ifname) {
    const Radio* const radio = find_radio(ifname);
    if (radio == nullptr || !board::is_client(*radio, ifname)) return std::nullopt;
    if (!radio->client.ssid.empty()) return radio->client;
    const auto upstream = board::upstream_of(ifname);
    if (!upstream) return std::nullopt;
    return link_to(*upstream, radio->bss[0]);
}

// What a network announces: as its driver runs, else as it is configured.
std::string network_name(const Radio& radio, const char* ifname) {
    const auto number = static_cast<size_t>(board::bss_number(radio, ifname));
    return board::announced_ssid(ifname).value_or(radio.bss[number].ssid);
}

}  // namespace

extern "C" {

// Only a radio that is up can scan. The scan goes on when this has returned.
int wireless_api_get_best_channel2(const char* ifname, const char* country, int bandwidth_mhz,
                                   int32_t* channel) {
    board::journal({"best_channel", ifname, country, std::to_string(bandwidth_mhz)});
    const Radio* const radio = find_radio(ifname);
    if (radio == nullptr || !board::interface_is_up(ifname)) return -1;
    board::start_scan(ifname, state().scan_polls);
    const channel_spec& best = radio->best_channel;
    const int32_t words[] = {best.channel, best.ext_channel, best.frequency_mhz, best.reserved,
                             best.bandwidth_mhz};
    std::copy(std::begin(words), std::end(words), channel);
    return 0;
}

int wireless_check_channel_valid(const char* ifname, uint64_t, int, int channel) {
    const Radio* const radio = find_radio(ifname);
    if (radio == nullptr) return 0;
    const auto& valid = radio->valid_channels;
    return std::find(valid.begin(), valid.end(), channel) != valid.end();
}

// -1: as the radio and the silent hours have it, else on or off.
int wireless_set_led(const char* ifname, int led_state) {
    board::journal({"wireless_set_led", ifname, std::to_string(led_state)});
    const Radio* const radio = find_radio(ifname);
    if (radio == nullptr) return -1;
    const bool lit = led_state == -1
                         ? board::interface_is_up(ifname) && !board::is_silent(state().led_silence)
                         : led_state != 0;
    if (radio->led_gpio >= 0) board::set_pin_output(radio->led_gpio, lit ? 0 : 1);
    return 0;
}

int get_band_steering_running(int group) {
    return group == 0 ? state().band_steering : 0;
}

int update_wl_conf_from_band_steering(wireless_conf* record, int group) {
    if (group != 0) return -1;
    sf_strncpy(record->ssid, state().band_steering_ssid.c_str(), sizeof record->ssid);
    return 0;
}

int check_wireless_ifstatus(int wl_mode) {
    const Radio* const radio = find_radio(wl_mode);
    return radio != nullptr && board::interface_is_up(radio->main_ifname);
}

// A repeater client answers with its upstream network, a BSS with its own.
int iwconfig_client_get_essid(const char* ifname, char* essid) {
    constexpr size_t kEssidSize = 33;
    essid[0] = '\0';
    const Radio* const radio = find_radio(ifname);
    if (radio == nullptr) return -1;
    const auto link = link_of(ifname);
    const std::string name = link                               ? link->ssid
                             : board::is_client(*radio, ifname) ? ""
                                                                : network_name(*radio, ifname);
    sf_strncpy(essid, name.c_str(), kEssidSize);
    return 0;
}

int iwconfig_client_get_ap_mac(const char* ifname, char* mac) {
    constexpr size_t kMacTextSize = 18;
    const auto link = link_of(ifname);
    if (!link || link->ap_mac.empty()) return 0;
    sf_strncpy(mac, link->ap_mac.c_str(), kMacTextSize);
    return 1;
}

int iwconfig_client_get_channel(const char* ifname, channel_spec* spec) {
    const Radio* const radio = find_radio(ifname);
    if (radio == nullptr) return -1;
    const wireless_conf& record = radio->bss[0];
    if (const auto link = link_of(ifname))
        *spec = link->channel;
    else if (record.channel == 0)
        *spec = radio->best_channel;
    else
        *spec = {record.channel, record.ext_channel, record.channel_rest[0], record.channel_rest[1],
                 record.channel_rest[2]};
    return 0;
}

int iwconfig_client_get_link_speed(const char* ifname) {
    const auto link = link_of(ifname);
    return link ? link->speed_mbps : 0;
}

}  // extern "C"
