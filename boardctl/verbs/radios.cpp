// The running radios: state, stations, networks in reach.
#include <span>

#include "board/model/interfaces.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

constexpr const char* kAuthWords[] = {
    "", "open",     "WEP",  "",         "WPA",          "WPA-PSK",
    "", "WPA-None", "WPA2", "WPA2-PSK", "WPA/WPA2-PSK", "WPA/WPA2"};
constexpr const char* kCipherWords[] = {"none", "WEP", "", "TKIP", "AES", "TKIP+AES"};

std::string word_of(std::span<const char* const> words, int32_t code) {
    const auto index = static_cast<size_t>(code);
    return code >= 0 && index < words.size() && words[index][0] != '\0' ? words[index]
                                                                        : std::to_string(code);
}

Json radio_row(const Session& session, const Radio& radio) {
    const Platform& platform = session.platform;
    const char* const ifname = radio.main_ifname.c_str();
    const char* const client = radio.client_ifname.c_str();
    channel_spec spec{};
    dfs_info info{};
    ap_entry entry{};
    platform.wireless_api_get_current_channelspec(ifname, &spec);
    const bool has_radar = platform.wireless_get_dfs_info(ifname, &info) != 0;
    const bool is_linked = platform.wireless_api_get_mbridge_status(client, &entry) != 0;
    const int speed = platform.rt61_get_wireless_link_speed(client);
    return {{"radio", ifname},
            {"channel", spec.channel},
            {"second", spec.ext_channel},
            {"mhz", spec.frequency_mhz},
            {"width", spec.bandwidth_mhz},
            {"radar", if_known(has_radar, info.rd_mode)},
            {"moving_seconds", if_known(has_radar, info.channel_moving_time)},
            {"remaining", if_known(has_radar, info.remaining)},
            {"upstream", if_known(is_linked, field_text(entry.ssid))},
            {"upstream_bssid", if_known(is_linked, field_text(entry.bssid))},
            {"dbm", if_known(is_linked, entry.rssi)},
            {"mbit_s", if_known(is_linked, speed)}};
}

void add_interface(const Session& session, const std::string& ifname, Json& rows) {
    if (!board::interface_exists(ifname)) return;
    char ssid[128] = {};
    const bool is_up = board::interface_is_up(ifname);
    if (is_up) session.platform.wireless_api_get_ssid(ifname.c_str(), ssid);
    const std::string bridge = board::bridge_of(ifname);
    rows.push_back({{"interface", ifname},
                    {"state", board::interface_attribute(ifname, "operstate")},
                    {"bridge", if_known(!bridge.empty(), bridge)},
                    {"ssid", if_known(is_up, field_text(ssid))}});
}

Outcome radios(Session& session, const Arguments& arguments) {
    Json rows = Json::array();
    Json interfaces = Json::array();
    for (const Radio& radio : named_radios(session, arguments)) {
        rows.push_back(radio_row(session, radio));
        for (const std::string& ifname : radio.network_ifnames)
            add_interface(session, ifname, interfaces);
        add_interface(session, radio.client_ifname, interfaces);
    }
    return {{{"radios", rows}, {"interfaces", interfaces}}};
}

Json station_row(const Session& session, const station_entry& entry) {
    const bool is_client = (entry.wl_index & kClientNetwork) == 0;
    const bool counts_bytes = entry.chain_best != 0;  // the driver's V2 table does
    const std::string ifname = is_client ? session.platform.get_wl_ifname(entry.wl_index) : "";
    return {{"station", field_text(entry.mac)},
            {"interface", if_known(is_client, ifname)},
            {"network", if_known(is_client, field_text(entry.ssid))},
            {"tx_mbit_s", entry.column6},
            {"rx_mbit_s", entry.column7},
            {"seconds", entry.column8},
            {"counted", counts_bytes ? "bytes" : "packets"},
            {"rx", counts_bytes ? Json(entry.column9_v2) : Json(entry.column9)},
            {"tx", counts_bytes ? Json(entry.column10_v2) : Json(entry.column10)},
            {"rssi_dbm", if_known(counts_bytes, entry.chain_best)}};
}

Outcome stations(Session& session, const Arguments& arguments) {
    Json rows = Json::array();
    for (const Radio& radio : named_radios(session, arguments)) {
        const auto list = station_list_of(session, radio);
        for (uint32_t i = 0; i < list->count; ++i)
            rows.push_back(station_row(session, list->entries[i]));
    }
    return {{{"stations", rows}}};
}

Json survey_row(const std::string& radio, const ap_entry& entry) {
    std::string vendor = field_text(entry.element.text);
    vendor.erase(vendor.find_last_not_of(' ') + 1);
    const bool pushed = (entry.flags & AP_FLAG_WPS_PUSH_BUTTON) != 0;
    return {{"radio", radio},
            {"ssid", field_text(entry.ssid)},
            {"bssid", field_text(entry.bssid)},
            {"channel", entry.channel.channel},
            {"mhz", entry.channel.frequency_mhz},
            {"signal", entry.signal},
            {"dbm", entry.rssi},
            {"auth", word_of(kAuthWords, entry.auth_mode)},
            {"cipher", word_of(kCipherWords, entry.encryption)},
            {"wps", if_known(pushed, "button")},
            {"vendor", if_known(!vendor.empty(), vendor)}};
}

Outcome survey(Session& session, const Arguments& arguments) {
    Json rows = Json::array();
    for (const Radio& radio : named_radios(session, arguments)) {
        const auto list = survey_of(session, radio);
        for (uint32_t i = 0; i < list->count; ++i)
            rows.push_back(survey_row(radio.main_ifname, list->entries[i]));
    }
    return {{{"networks", rows}}};
}

}  // namespace

Verbs radio_verbs() {
    return {
        Verb("radios",
             "Channel, radar state and upstream link of the radios, and their interfaces.",
             "radios\nradios rai0 --json", radios, {kRadioOrAll}),
        Verb("stations", "The stations on the networks.", "stations\nstations ra0 --json", stations,
             {kRadioOrAll}),
        Verb("survey", "Surveys the networks in reach.", "survey\nsurvey rai0 --json", survey,
             {kRadioOrAll}),
    };
}

}  // namespace boardctl
