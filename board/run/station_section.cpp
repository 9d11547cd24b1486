// Who is on the networks.
#include <algorithm>
#include <cstdio>
#include <memory>

#include "host/radio.h"
#include "live/journal.h"
#include "live/neighbours.h"
#include "live/radio_driver.h"
#include "live/stations.h"
#include "platform/platform.h"
#include "run/radio_section.h"
#include "run/report.h"

namespace board::run {
namespace {

constexpr uint32_t kClientNetwork = 4096;

std::vector<std::string> station_row(const station_entry& entry) {
    const bool upstream = (entry.wl_index & kClientNetwork) != 0;
    const bool counts_bytes = entry.chain_best != 0;  // the V2 table does
    const auto amount = [&](uint64_t bytes, int32_t packets) {
        return counts_bytes ? std::to_string(bytes) + " bytes" : number(packets) + " packets";
    };
    return {entry.mac,
            upstream ? "(repeater link)" : quote(entry.ssid),
            number(entry.column6),
            number(entry.column7),
            number(entry.column8),
            amount(entry.column9_v2, entry.column9),
            amount(entry.column10_v2, entry.column10),
            counts_bytes ? number(entry.chain_best) : "-"};
}

// The list holds the stations that are there, each on its network, then the repeater link.
void check_stations(Faults& faults, int wl_mode, const station_list& list) {
    Faults wanted;
    const auto radio = static_cast<uint32_t>(wl_mode) << 16;
    for (const Station& station : stations_of(find_radio(wl_mode)->main_ifname))
        wanted.push_back(
            station.mac + '@' +
            std::to_string(radio + static_cast<uint32_t>(network_number(station.ifname))));
    if (const auto upstream = upstream_of(find_radio(wl_mode)->client_prefix + '0'))
        wanted.push_back(upstream->bssid + '@' + std::to_string(radio + kClientNetwork));
    for (std::string& line : wanted) std::replace(line.begin(), line.end(), ':', '-');
    Faults found;
    for (uint32_t i = 0; i < list.count; ++i) {
        const station_entry& entry = list.entries[i];
        found.push_back(std::string(entry.mac) + '@' + std::to_string(entry.wl_index));
    }
    require(faults, found == wanted,
            "the stations listed are " + joined(found) + " instead of " + joined(wanted));
}

}  // namespace

std::vector<std::string> list_stations(const Platform& platform, Steps& steps, int wl_mode) {
    Faults faults;
    const std::string& main_ifname = find_radio(wl_mode)->main_ifname;
    const auto list = std::make_unique<station_list>();
    std::snprintf(list->ifname, sizeof list->ifname, "%s", main_ifname.c_str());
    const auto get = PLATFORM_CALL(platform, wireless_api_get_station_list);
    const int result = steps.step("wireless_api_get_station_list(\"" + main_ifname + "\")",
                                  [&] { return get(list.get()); });
    require(faults, result == 0, "the stations of " + main_ifname + " cannot be listed");
    check_stations(faults, wl_mode, *list);
    if (list->count == 0) return faults;

    Rows rows = {
        {"Station", "Network", "TX Mbit/s", "RX Mbit/s", "Seconds", "RX", "TX", "RSSI dBm"}
    };
    for (uint32_t i = 0; i < list->count; ++i) rows.push_back(station_row(list->entries[i]));
    heading("Stations of " + main_ifname);
    table(rows);
    return faults;
}

}  // namespace board::run
