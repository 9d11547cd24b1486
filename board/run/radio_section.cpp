#include "run/radio_section.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "frame/host.h"
#include "host/radio.h"
#include "live/journal.h"
#include "live/neighbours.h"
#include "live/radio_driver.h"
#include "live/stations.h"
#include "platform/platform.h"
#include "run/check.h"
#include "run/report.h"

namespace board::run {
namespace {

using Faults = std::vector<std::string>;
constexpr int kDenyListed = 1;

class Radios {
public:
    Radios(const Platform& platform, Steps& steps) : platform_(platform), steps_(steps) {}

    Faults run() {
        join_upstream();
        for (const int32_t wl_mode : state().wl_modes)
            add(list_stations(platform_, steps_, wl_mode));
        for (const int32_t wl_mode : state().wl_modes)
            add(survey_networks(platform_, steps_, wl_mode));
        show_state();
        if (state().wl_modes.empty()) return faults_;
        const int last = state().wl_modes.back();
        if (wireless_check_8021x_enabled2(last) == 0) add(run_wps(platform_, steps_, last));
        deny_a_station(last);
        return faults_;
    }

private:
    void require(bool good, const std::string& fault) { run::require(faults_, good, fault); }

    void add(const Faults& faults) { faults_.insert(faults_.end(), faults.begin(), faults.end()); }

    static const std::string& main_of(int wl_mode) { return find_radio(wl_mode)->main_ifname; }
    static std::string client_of(int wl_mode) { return find_radio(wl_mode)->client_prefix + '0'; }

    static bool can_join(const Neighbour& neighbour, const std::string& main_ifname) {
        return neighbour.security == "WPA2PSK/AES" && !neighbour.ssid.empty() &&
               wireless_check_channel_valid(main_ifname.c_str(), 0, 20, neighbour.channel) != 0;
    }

    // As if the owner had the last radio repeat a neighbour's network.
    void join_upstream() {
        if (state().wl_modes.empty()) return;
        const int wl_mode = state().wl_modes.back();
        const std::string& main_ifname = main_of(wl_mode);
        wireless_conf& settings = find_radio(wl_mode)->bss[0];
        const auto neighbours = neighbours_of(main_ifname);
        const auto upstream =
            std::find_if(neighbours.begin(), neighbours.end(),
                         [&](const Neighbour& each) { return can_join(each, main_ifname); });
        if (settings.apcli_enable != 0 || upstream == neighbours.end()) return;

        heading("The owner has " + main_ifname + " repeat a neighbour's network");
        std::printf("  SSID  %s\n", quote(upstream->ssid).c_str());
        settings.apcli_enable = 1;
        settings.apcli_auth_mode = WIRELESS_AUTH_WPA2PSK;
        settings.apcli_encryption = WIRELESS_CIPHER_AES;
        std::snprintf(settings.apcli_ssid, sizeof settings.apcli_ssid, "%s",
                      upstream->ssid.c_str());
        std::snprintf(settings.apcli_wpa_psk, sizeof settings.apcli_wpa_psk, "upstream-passphrase");
        steps_.step("platform_set_wireless(null, \"" + main_ifname + "\")",
                    [&] { return platform_.platform_set_wireless(nullptr, main_ifname.c_str()); });
        add(faults_of_board(wl_mode != 0));
    }

    void show_state() {
        Rows rows = {
            {"Radio", "Channel", "Second", "MHz", "Width", "Radar", "Moving", "Upstream", "dBm",
             "Mbit/s"}
        };
        for (const int32_t wl_mode : state().wl_modes) rows.push_back(radio_row(wl_mode));
        heading("Radios");
        table(rows);
    }

    std::vector<std::string> radio_row(int wl_mode) {
        const std::string& name = main_of(wl_mode);
        channel_spec spec{};
        const auto channel_of = PLATFORM_CALL(platform_, wireless_api_get_current_channelspec);
        steps_.step("wireless_api_get_current_channelspec(\"" + name + "\")",
                    [&] { return channel_of(name.c_str(), &spec); });
        channel_spec wanted{};
        iwconfig_client_get_channel(name.c_str(), &wanted);
        require(spec.channel == wanted.channel && spec.frequency_mhz == wanted.frequency_mhz,
                name + " reports channel " + number(spec.channel));

        std::vector<std::string> row = {name, number(spec.channel), number(spec.ext_channel),
                                        number(spec.frequency_mhz), number(spec.bandwidth_mhz)};
        add_radar(name, row);
        add_upstream(client_of(wl_mode), row);
        return row;
    }

    void add_radar(const std::string& name, std::vector<std::string>& row) {
        dfs_info info{};
        const auto get = PLATFORM_CALL(platform_, wireless_get_dfs_info);
        const bool known = steps_.step("wireless_get_dfs_info(\"" + name + "\")",
                                       [&] { return get(name.c_str(), &info); }) != 0;
        constexpr const char* kKey = "Dot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount=";
        const std::string statistics = driver_statistics(name);
        const size_t place = statistics.find(kKey);
        int mode = 0;
        int moving = 0;
        int count = 0;
        const bool told = name != "ra0" && place != std::string::npos &&
                          std::sscanf(statistics.c_str() + place + std::strlen(kKey), "%d,%d,%d",
                                      &mode, &moving, &count) == 3;
        const int remaining = std::max(moving - count, 0);
        require(known == told && (!told || (info.rd_mode == mode && info.remaining == remaining)),
                name + " reports the wrong radar state");
        row.push_back(known ? number(info.rd_mode) : "-");
        row.push_back(known ? number(info.remaining) + " of " + number(info.channel_moving_time)
                            : "-");
    }

    void add_upstream(const std::string& client, std::vector<std::string>& row) {
        ap_entry entry{};
        const auto get = PLATFORM_CALL(platform_, wireless_api_get_mbridge_status);
        const auto speed_of = PLATFORM_CALL(platform_, rt61_get_wireless_link_speed);
        const bool linked = steps_.step("wireless_api_get_mbridge_status(\"" + client + "\")",
                                        [&] { return get(client.c_str(), &entry); }) != 0;
        const int speed = speed_of(client.c_str());
        const auto upstream = upstream_of(client);
        const bool right =
            linked == upstream.has_value() && linked == (speed != 0) &&
            (!upstream || (entry.ssid == upstream->ssid && entry.bssid == upstream->bssid &&
                           entry.rssi == upstream->rssi_dbm));
        require(right, client + " reports the wrong link");
        for (const std::string& cell : {quote(entry.ssid), number(entry.rssi), number(speed)})
            row.push_back(linked ? cell : "-");
    }

    // As if the owner locked the first station of a radio out of its network.
    void deny_a_station(int wl_mode) {
        const auto stations = stations_of(main_of(wl_mode));
        if (stations.empty()) return;
        const Station station = stations.front();
        const int network = network_number(station.ifname);
        const uint32_t wl_index =
            (static_cast<uint32_t>(wl_mode) << 16) + static_cast<uint32_t>(network);
        heading("The owner denies " + station.mac + " the network of " + station.ifname);
        state().mac_filters[wl_index] = {kDenyListed, {filter_entry(station.mac)}};

        const auto apply = PLATFORM_CALL(platform_, wireless_apply_macauth);
        const auto set_policy = PLATFORM_CALL(platform_, wireless_macauth_set_policy);
        const std::string index = number(wl_index);
        steps_.step("wireless_apply_macauth(" + index + ")", [&] { return apply(wl_index); });
        steps_.step("wireless_macauth_set_policy(" + index + ", 1)",
                    [&] { return set_policy(wl_index, kDenyListed); });
        check_denied(wl_mode, network, station);
        add(list_stations(platform_, steps_, wl_mode));
    }

    void check_denied(int wl_mode, int network, const Station& station) {
        for (const Station& each : stations_of(main_of(wl_mode)))
            require(each.mac != station.mac, "the driver still lets " + station.mac + " in");
        const KeyFile profile = KeyFile::load_or_empty(profile_path(wl_mode));
        const auto value = [&](const char* key) { return profile.get(key + number(network)); };
        require(value("AccessPolicy") == "2" && value("AccessControlList") == station.mac + ';',
                "the profile does not deny " + station.mac);
    }

    const Platform& platform_;
    Steps& steps_;
    Faults faults_;
};

}  // namespace

std::vector<std::string> use_radios(const Platform& platform, Steps& steps) {
    return Radios(platform, steps).run();
}

}  // namespace board::run
