// The running radios: state, stations, networks in reach.
#include <cstdio>
#include <cstring>
#include <memory>

#include "board/model/interfaces.h"
#include "boardctl/verbs/radio_names.h"
#include "boardctl/verbs/radio_rows.h"
#include "platform/platform.h"
#include "src/host/host.h"

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

void add_radar(const Session& session, const Radio& radio, Json& row) {
    dfs_info info{};
    const bool known = PLATFORM_CALL(session.library, wireless_get_dfs_info)(
                           radio.main_ifname.c_str(), &info) != 0;
    row["radar"] = known ? Json(info.rd_mode) : Json();
    row["moving_seconds"] = known ? Json(info.channel_moving_time) : Json();
    row["remaining"] = known ? Json(info.remaining) : Json();
}

void add_upstream(const Session& session, const Radio& radio, Json& row) {
    ap_entry entry{};
    const char* const client = radio.client_ifname.c_str();
    const bool linked =
        PLATFORM_CALL(session.library, wireless_api_get_mbridge_status)(client, &entry) != 0;
    const int speed = PLATFORM_CALL(session.library, rt61_get_wireless_link_speed)(client);
    row["upstream"] = linked ? Json(field_text(entry.ssid)) : Json();
    row["upstream_bssid"] = linked ? Json(field_text(entry.bssid)) : Json();
    row["dbm"] = linked ? Json(entry.rssi) : Json();
    row["mbit_s"] = linked ? Json(speed) : Json();
}

Json radio_row(const Session& session, const Radio& radio) {
    channel_spec spec{};
    PLATFORM_CALL(session.library, wireless_api_get_current_channelspec)
    (radio.main_ifname.c_str(), &spec);
    Json row = {{"radio", radio.main_ifname},
                {"channel", spec.channel},
                {"second", spec.ext_channel},
                {"mhz", spec.frequency_mhz},
                {"width", spec.bandwidth_mhz}};
    add_radar(session, radio, row);
    add_upstream(session, radio, row);
    return row;
}

Json network_row(const Session& session, const std::string& ifname) {
    char ssid[128] = {};
    const bool is_up = board::interface_is_up(ifname);
    if (is_up) PLATFORM_CALL(session.library, wireless_api_get_ssid)(ifname.c_str(), ssid);
    const std::string bridge = board::bridge_of(ifname);
    return {{"interface", ifname},
            {"state", board::interface_attribute(ifname, "operstate")},
            {"bridge", bridge.empty() ? Json() : Json(bridge)},
            {"ssid", is_up ? Json(field_text(ssid)) : Json()}};
}

Json interface_rows(const Session& session, const Radio& radio) {
    Json rows = Json::array();
    for (uint32_t number = 0; number < PLATFORM_BSS_MAX; ++number) {
        const std::string ifname =
            network_ifname(session, (static_cast<uint32_t>(radio.wl_mode) << 16) + number);
        if (board::interface_exists(ifname)) rows.push_back(network_row(session, ifname));
    }
    if (board::interface_exists(radio.client_ifname))
        rows.push_back(network_row(session, radio.client_ifname));
    return rows;
}

Outcome radios(Session& session, const Arguments& arguments) {
    Json rows = Json::array();
    Json interfaces = Json::array();
    for (const Radio& radio : named_radios(session, arguments)) {
        rows.push_back(radio_row(session, radio));
        for (const Json& row : interface_rows(session, radio)) interfaces.push_back(row);
    }
    return {{{"radios", rows}, {"interfaces", interfaces}}};
}

Json station_row(const Session& session, const station_entry& entry) {
    const bool upstream = (entry.wl_index & kClientNetwork) != 0;
    const bool counts_bytes = entry.chain_best != 0;  // the driver's V2 table does
    Json row = {{"station", field_text(entry.mac)},
                {"interface", upstream ? Json() : Json(network_ifname(session, entry.wl_index))},
                {"network", upstream ? Json() : Json(field_text(entry.ssid))},
                {"tx_mbit_s", entry.column6},
                {"rx_mbit_s", entry.column7},
                {"seconds", entry.column8},
                {"counted", counts_bytes ? "bytes" : "packets"}};
    row["rx"] = counts_bytes ? Json(entry.column9_v2) : Json(entry.column9);
    row["tx"] = counts_bytes ? Json(entry.column10_v2) : Json(entry.column10);
    row["rssi_dbm"] = counts_bytes ? Json(entry.chain_best) : Json();
    return row;
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
            {"wps", pushed ? Json("button") : Json()},
            {"vendor", vendor.empty() ? Json() : Json(vendor)}};
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

constexpr Option kRadioOption = {"IFNAME", Kind::positional,
                                 "an interface of the radio; all radios when not given"};

constexpr Option kRadiosOptions[] = {
    kRadioOption,
};
constexpr Option kStationsOptions[] = {
    kRadioOption,
};
constexpr Option kSurveyOptions[] = {
    kRadioOption,
};

}  // namespace

std::unique_ptr<station_list> station_list_of(Session& session, const Radio& radio) {
    auto list = std::make_unique<station_list>();
    std::snprintf(list->ifname, sizeof list->ifname, "%s", radio.main_ifname.c_str());
    const Step step = session.perform(
        "wireless_api_get_station_list(\"" + radio.main_ifname + "\")",
        [&] { return PLATFORM_CALL(session.library, wireless_api_get_station_list)(list.get()); });
    if (step.result != 0) throw Failed("the stations of " + radio.main_ifname + " are not known");
    return list;
}

std::unique_ptr<ap_list> survey_of(Session& session, const Radio& radio) {
    auto list = std::make_unique<ap_list>();
    const char* const ifname = radio.main_ifname.c_str();
    std::snprintf(list->ifname, sizeof list->ifname, "%s", ifname);
    const Library& library = session.library;
    session.perform("survey of " + radio.main_ifname + ": start",
                    [&] { return PLATFORM_CALL(library, wireless_api_start_ap_scan)(ifname); });
    const Step waited = session.perform("survey of " + radio.main_ifname + ": waiting", [&] {
        return PLATFORM_CALL(library, wireless_api_wait_scan_end)(ifname);
    });
    const Step got = session.perform("survey of " + radio.main_ifname + ": reading", [&] {
        return PLATFORM_CALL(library, platform_wireless_api_get_ap_list)(list.get());
    });
    if (waited.result != 0 || got.result != 0)
        throw Failed("the survey of " + radio.main_ifname + " did not end well");
    return list;
}

std::span<const Verb> radio_verbs() {
    static const Verb kVerbs[] = {
        {"radios", "",
         "Channel, radar state and upstream link of the radios, and their interfaces.",
         "  boardctl radios\n  boardctl radios rai0 --json", radios, kRadiosOptions},
        {"stations", "", "The stations on the networks.",
         "  boardctl stations\n  boardctl stations ra0 --json", stations, kStationsOptions},
        {"survey", "", "Surveys the networks in reach.",
         "  boardctl survey\n  boardctl survey rai0 --json", survey, kSurveyOptions},
    };
    return kVerbs;
}

}  // namespace boardctl
