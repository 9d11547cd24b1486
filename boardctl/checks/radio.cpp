// Checks of what the library tells about the running radios.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "board/model/interfaces.h"
#include "board/model/neighbours.h"
#include "board/model/radio_driver.h"
#include "board/model/stations.h"
#include "board/model/wps_run.h"
#include "board/store/journal.h"
#include "board/store/key_file.h"
#include "boardctl/checks/checks.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

using Texts = std::vector<std::string>;

std::string joined(const Texts& texts) {
    std::string line;
    for (const std::string& text : texts) line += (line.empty() ? "" : " ") + text;
    return line;
}

void check_channel(const Session& session, Faults& faults, const std::string& name) {
    channel_spec told{};
    channel_spec is{};
    session.platform.wireless_api_get_current_channelspec(name.c_str(), &told);
    session.host.iwconfig_client_get_channel(name.c_str(), &is);
    faults.require(told.channel == is.channel && told.frequency_mhz == is.frequency_mhz,
                   name + " reports channel " + std::to_string(told.channel));
}

void check_radar(const Session& session, Faults& faults, const std::string& name) {
    constexpr const char* kKey = "Dot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount=";
    dfs_info info{};
    const bool is_told = session.platform.wireless_get_dfs_info(name.c_str(), &info) != 0;
    const std::string statistics = board::driver_statistics(name);
    const size_t place = statistics.find(kKey);
    int mode = 0;
    int moving = 0;
    int count = 0;
    const bool is_known = name != "ra0" && place != std::string::npos &&
                          std::sscanf(statistics.c_str() + place + std::strlen(kKey), "%d,%d,%d",
                                      &mode, &moving, &count) == 3;
    const bool is_right =
        !is_known || (info.rd_mode == mode && info.remaining == std::max(moving - count, 0));
    faults.require(is_told == is_known && is_right, name + " reports the wrong radar state");
}

void check_upstream(const Session& session, Faults& faults, const std::string& client) {
    ap_entry entry{};
    const bool is_linked =
        session.platform.wireless_api_get_mbridge_status(client.c_str(), &entry) != 0;
    const int speed = session.platform.rt61_get_wireless_link_speed(client.c_str());
    const auto upstream = board::upstream_of(client);
    const bool is_right =
        !upstream || (entry.ssid == upstream->ssid && entry.bssid == upstream->bssid &&
                      entry.rssi == upstream->rssi_dbm);
    faults.require(is_right && is_linked == upstream.has_value() && is_linked == (speed != 0),
                   client + " reports the wrong link");
}

std::string station_line(const std::string& mac, uint32_t wl_index) {
    std::string line = mac + '@' + std::to_string(wl_index);
    std::replace(line.begin(), line.end(), ':', '-');
    return line;
}

// The stations that are there, each on its network, then the repeater link.
Texts stations_there(const Radio& radio) {
    Texts lines;
    for (const board::Station& station : board::stations_of(radio.main_ifname))
        lines.push_back(station_line(station.mac, radio.wl_index(static_cast<uint32_t>(
                                                      board::network_number(station.ifname)))));
    if (const auto upstream = board::upstream_of(radio.client_ifname))
        lines.push_back(station_line(upstream->bssid, radio.wl_index(kClientNetwork)));
    return lines;
}

std::string network_line(const std::string& bssid, const std::string& ssid, int dbm, bool pushed) {
    return bssid + ' ' + board::quote(ssid) + ' ' + std::to_string(dbm) + (pushed ? " button" : "");
}

// Those on channels that the country does not allow are left out.
Texts networks_there(const Session& session, const std::string& name) {
    const auto& is_valid = session.host.wireless_check_channel_valid;
    Texts lines;
    for (const board::Neighbour& each : board::neighbours_of(name))
        if (is_valid(name.c_str(), 0, 20, each.channel) != 0)
            lines.push_back(network_line(each.bssid, each.ssid, each.rssi_dbm, each.wps == "PBC"));
    return lines;
}

void check_filter(const Session& session, Faults& faults, const Network& network) {
    // With EasyMesh, profiles keep the list that they have; the driver is told the host's at run
    // time.
    const bool is_easymesh = session.host.easymesh_enabled() != 0;
    if (is_easymesh && !board::driver_setting(network.ifname, "AccessPolicy")) return;
    const AccessFilter wanted = access_filter_of(session, network.wl_index());
    const auto in_force = board::access_control(network.ifname);
    const int policy = other_policy(wanted.policy);
    faults.require(!is_running(network.radio) ||
                       (in_force.policy == policy && in_force.addresses == wanted.addresses),
                   "the driver of " + network.ifname + " has another access list than the host");

    const auto profile = board::KeyFile::load_or_empty(network.radio.profile_path);
    const std::string number = std::to_string(network.number);
    std::string list;
    for (const std::string& mac : wanted.addresses) list += mac + ';';
    faults.require(is_easymesh || (profile.get("AccessPolicy" + number) == std::to_string(policy) &&
                                   profile.get("AccessControlList" + number) == list),
                   network.radio.profile_path + " has another access list for " + network.ifname);
    for (const board::Station& station : board::stations_of(network.radio.main_ifname)) {
        const bool is_listed = std::find(wanted.addresses.begin(), wanted.addresses.end(),
                                         station.mac) != wanted.addresses.end();
        faults.require(station.ifname != network.ifname || wanted.policy == 0 ||
                           is_listed == (wanted.policy == 2),
                       "the driver lets " + station.mac + " in");
    }
}

}  // namespace

void check_radios(Session& session, Faults& faults) {
    for (const Radio& radio : radios_of(session)) {
        check_channel(session, faults, radio.main_ifname);
        check_radar(session, faults, radio.main_ifname);
        check_upstream(session, faults, radio.client_ifname);
    }
}

void check_stations(Session& session, Faults& faults) {
    for (const Radio& radio : radios_of(session)) {
        const auto list = station_list_of(session, radio);
        Texts found;
        for (uint32_t i = 0; i < list->count; ++i)
            found.push_back(
                station_line(field_text(list->entries[i].mac), list->entries[i].wl_index));
        const Texts wanted = stations_there(radio);
        faults.require(found == wanted, "the stations listed are " + joined(found) +
                                            " instead of " + joined(wanted));
    }
}

void check_survey(Session& session, Faults& faults) {
    for (const Radio& radio : radios_of(session)) {
        if (!board::interface_is_up(radio.main_ifname)) continue;  // it cannot scan
        const auto list = survey_of(session, radio);
        Texts found;
        for (uint32_t i = 0; i < list->count; ++i) {
            const ap_entry& entry = list->entries[i];
            found.push_back(network_line(field_text(entry.bssid), field_text(entry.ssid),
                                         entry.rssi, (entry.flags & AP_FLAG_WPS_PUSH_BUTTON) != 0));
        }
        const Texts wanted = networks_there(session, radio.main_ifname);
        faults.require(found == wanted, "the survey of " + radio.main_ifname + " lists " +
                                            joined(found) + " instead of " + joined(wanted));
    }
}

void check_access(Session& session, Faults& faults) {
    for (const Radio& radio : radios_of(session))
        for (const Network& network : networks_of(session, radio))
            check_filter(session, faults, network);
}

void check_wps(Session& session, Faults& faults) {
    const auto device = board::wps_peer();
    for (const Radio& radio : radios_of(session)) {
        const std::string& name = radio.main_ifname;
        const auto networks = networks_of(session, radio);
        const auto mode = board::driver_setting(name, "WscConfMode");
        const std::string key = "wps_status." + name;
        const bool is_running =
            session.host.istatus_get_intvalue_direct(key.c_str()) == WPS_STATE_RUNNING;
        if (!mode || networks.empty() || is_running) continue;
        faults.require(mode == (networks[0].record.wps_enable != 0 ? "6" : "0"),
                       "WPS on " + name + " was not put back into its normal mode");
        wsc_peer_info peer{};
        session.platform.apcp_get_wsc_peerinfo_by_ifname(name.c_str(), &peer);
        faults.require(
            !board::has_wps_peer(name) || (field_text(peer.device_name) == device.front().text &&
                                           field_text(peer.serial_number) == device.back().text),
            "WPS on " + name + " does not know the other device");
    }
}

}  // namespace boardctl
