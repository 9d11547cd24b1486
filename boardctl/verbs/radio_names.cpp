#include "boardctl/verbs/radio_names.h"

#include <algorithm>

#include "board/model/interfaces.h"
#include "boardctl/nearest.h"
#include "platform/wlmap.h"
#include "src/host/host.h"

namespace boardctl {

std::vector<Radio> radios_of(const Session& session) {
    std::vector<Radio> radios;
    const Library& library = session.library;
    for (const int32_t* mode = HOST_CALL(library, get_wlm_list)(); *mode != -1; ++mode)
        radios.push_back({*mode, PLATFORM_CALL(library, get_wl_ifname_by_wlmode)(*mode),
                          PLATFORM_CALL(library, get_wl_bridge_ifname_by_wlmode)(*mode),
                          PLATFORM_CALL(library, get_racfg_filename)(*mode)});
    return radios;
}

Radio named_radio(const Session& session, const std::string& ifname) {
    std::vector<std::string> names;
    for (const Radio& radio : radios_of(session)) {
        for (uint32_t number = 0; number < PLATFORM_BSS_MAX; ++number)
            names.push_back(
                network_ifname(session, (static_cast<uint32_t>(radio.wl_mode) << 16) + number));
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

std::string network_ifname(const Session& session, uint32_t wl_index) {
    return PLATFORM_CALL(session.library, get_wl_ifname)(wl_index);
}

bool is_running(const Session& session, const Radio& radio) {
    const auto first = static_cast<uint32_t>(radio.wl_mode) << 16;
    bool is_up = board::interface_is_up(radio.client_ifname);
    for (uint32_t number = 0; number < PLATFORM_BSS_MAX; ++number)
        is_up = is_up || board::interface_is_up(network_ifname(session, first + number));
    return is_up;
}

Network named_network(const Session& session, const std::string& ifname) {
    const Radio radio = named_radio(session, ifname);
    const int32_t wl_index = PLATFORM_CALL(session.library, get_wl_idx_by_ifname)(ifname.c_str());
    if (wl_index == -1 || ifname == radio.client_ifname)
        throw UsageError("a network is an interface such as ra0 or rai1, not " + ifname);
    return {radio, wl_index & 0xffff, ifname};
}

std::vector<wireless_conf> records_of(const Session& session, const Radio& radio) {
    std::vector<wireless_conf> records(PLATFORM_BSS_MAX);
    const int count = HOST_CALL(session.library, read_all_mbss_conf)(
        radio.main_ifname.c_str(), records.data(), PLATFORM_BSS_MAX);
    records.resize(count < 0 ? 0 : static_cast<size_t>(count));
    return records;
}

std::vector<Network> networks_of(const Session& session, const Radio& radio) {
    std::vector<Network> networks;
    const auto count = static_cast<int>(records_of(session, radio).size());
    for (int number = 0; number < count; ++number) {
        Network network{radio, number, ""};
        network.ifname = network_ifname(session, network.wl_index());
        networks.push_back(network);
    }
    return networks;
}

}  // namespace boardctl
