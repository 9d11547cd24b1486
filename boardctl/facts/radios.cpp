#include "boardctl/facts/radios.h"

#include <algorithm>
#include <cstdlib>

#include "board/model/interfaces.h"
#include "board/model/radio_driver.h"
#include "boardctl/nearest.h"

namespace boardctl {

std::vector<Radio> radios_of(const Session& session) {
    std::vector<Radio> radios;
    const Platform& platform = session.platform;
    for (const int32_t* mode = session.host.get_wlm_list(); *mode != -1; ++mode) {
        Radio& radio = radios.emplace_back(Radio{*mode,
                                                 platform.get_wl_ifname_by_wlmode(*mode),
                                                 platform.get_wl_bridge_ifname_by_wlmode(*mode),
                                                 platform.get_racfg_filename(*mode),
                                                 {}});
        for (uint32_t number = 0; number < PLATFORM_BSS_MAX; ++number)
            radio.network_ifnames.emplace_back(platform.get_wl_ifname(radio.wl_index(number)));
    }
    return radios;
}

Radio named_radio(const Session& session, const std::string& ifname) {
    std::vector<std::string> names;
    for (const Radio& radio : radios_of(session)) {
        names.insert(names.end(), radio.network_ifnames.begin(), radio.network_ifnames.end());
        names.push_back(radio.client_ifname);
        if (ifname == radio.main_ifname) return radio;
        if (std::find(names.begin(), names.end(), ifname) != names.end()) return radio;
    }
    throw UsageError("an interface of a radio is " + alternatives(names) + ", not " + ifname);
}

std::vector<Radio> named_radios(const Session& session, const Arguments& arguments) {
    if (!arguments.has("IFNAME")) return radios_of(session);
    return {named_radio(session, arguments.text("IFNAME"))};
}

bool is_running(const Radio& radio) {
    return board::interface_is_up(radio.client_ifname) ||
           std::any_of(radio.network_ifnames.begin(), radio.network_ifnames.end(),
                       [](const std::string& each) { return board::interface_is_up(each); });
}

Network named_network(const Session& session, const std::string& ifname) {
    const Radio radio = named_radio(session, ifname);
    const int32_t wl_index = session.platform.get_wl_idx_by_ifname(ifname.c_str());
    if (wl_index == -1 || ifname == radio.client_ifname)
        throw UsageError("a network is an interface such as ra0 or rai1, not " + ifname);
    return {radio, static_cast<uint32_t>(wl_index) & 0xffff, ifname, {}};
}

std::vector<Network> networks_of(const Session& session, const Radio& radio) {
    std::vector<wireless_conf> records(PLATFORM_BSS_MAX);
    const int count = session.host.read_all_mbss_conf(radio.main_ifname.c_str(), records.data(),
                                                      PLATFORM_BSS_MAX);
    std::vector<Network> networks;
    for (uint32_t number = 0; static_cast<int>(number) < count; ++number)
        networks.push_back({radio, number, radio.network_ifnames[number], records[number]});
    return networks;
}

std::unique_ptr<station_list> station_list_of(Session& session, const Radio& radio) {
    auto list = std::make_unique<station_list>();
    set_text(list->ifname, radio.main_ifname);
    const Step step = session.perform("the stations of " + radio.main_ifname,
                                      session.platform.wireless_api_get_station_list, list.get());
    if (step.result != 0) throw Failed(step.call + " are not known");
    return list;
}

std::unique_ptr<ap_list> survey_of(Session& session, const Radio& radio) {
    auto list = std::make_unique<ap_list>();
    const char* const ifname = radio.main_ifname.c_str();
    set_text(list->ifname, ifname);
    const std::string survey = "the survey of " + radio.main_ifname;
    const Platform& platform = session.platform;
    session.perform(survey + ": start", platform.wireless_api_start_ap_scan, ifname);
    const Step waited =
        session.perform(survey + ": waiting", platform.wireless_api_wait_scan_end, ifname);
    const Step got = session.perform(survey + ": reading",
                                     platform.platform_wireless_api_get_ap_list, list.get());
    if (waited.result != 0 || got.result != 0) throw Failed(survey + " did not end well");
    return list;
}

AccessFilter access_filter_of(const Session& session, uint32_t wl_index) {
    const Host& host = session.host;
    AccessFilter filter{host.macauth_get_policy(wl_index), {}};
    mac_filter_table* const table = host.macdb_read(wl_index, host.hwinfo_get_max_macauth());
    if (table == nullptr) return filter;
    const auto* const entries = reinterpret_cast<const mac_filter_entry*>(table + 1);
    for (int32_t i = 0; i < table->count; ++i)
        if (entries[i].inactive == 0)
            filter.addresses.push_back(address_text(session, entries[i].mac));
    host.macdb_free(table);
    return filter;
}

int other_policy(int policy) {
    constexpr int kOther[] = {0, 2, 1};  // the driver counts "only the listed" first
    return policy >= 0 && policy < 3 ? kOther[policy] : -1;
}

size_t calibration_place(const Radio& radio) {
    const auto offset = board::radio_index_value(radio.main_ifname, "EEPROM_offset").value_or("");
    return std::strtoul(offset.c_str(), nullptr, 16);
}

bool is_calibration(std::string_view head) {
    return head.size() == kCalibrationHead && head != std::string(kCalibrationHead, '\0') &&
           head != std::string(kCalibrationHead, '\xff');
}

}  // namespace boardctl
