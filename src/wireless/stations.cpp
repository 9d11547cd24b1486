#include <string.h>

#include <algorithm>

#include "platform/wireless.h"
#include "platform/wlmap.h"
#include "src/driver/answer.h"
#include "src/host/radios.h"
#include "src/support/command.h"
#include "src/support/stream.h"
#include "src/wireless/station_table.h"
#include "src/wlmap/ifname.h"

using namespace platform;

namespace {

std::span<const station_entry> stations_of(const station_list& list) {
    return {list.entries, list.count};
}

void list_stations_of_radio(int32_t wl_mode, station_list& list) {
    copy_text(list.ifname, IfName::main(wl_mode).view());
    wireless_api_get_station_list(&list);
}

}  // namespace

int wireless_api_get_station_list(station_list* list) {
    if (list == nullptr) return 1;

    const TextCopy<PLATFORM_IFNAME_SIZE + 1> ifname(field_text(list->ifname));
    TextBuffer<64> path;
    path.put("/var/run/station_table.").put(ifname.view());
    File file = driver_answer(
        ifname.view(),
        Command<256>("/sbin/iwpriv %s get_mac_table > %s", ifname.view(), path.view()), path);
    list->type = STATION_LIST_TYPE;
    list->count = 0;
    if (!file.ok()) return 1;

    const BssSet set(ifname.c_str());
    StationTable table(*list, set.configured(), get_wl_mode_by_ifname(ifname.c_str()));
    char line[kDriverLineSize];
    while (!table.full()) {
        const auto text = file.read_line(line);
        if (!text) break;
        table.take_line(*text);
    }
    const bool failed = file.failed();
    if (failed) list->count = 0;
    file.close();
    remove_file(path.c_str());
    return failed ? 1 : 0;
}

int wireless_api_check_station_exist(const char* ifname, char* mac) {
    if (ifname == nullptr) return 0;
    const int32_t wl_index = get_wl_idx_by_ifname(ifname);
    station_list list;
    memset(&list, 0, sizeof list);
    list_stations_of_radio(wl_index >> 16, list);
    if (mac != nullptr) strtoupper(mac);
    for (const station_entry& station : stations_of(list)) {
        if (station.wl_index != static_cast<uint32_t>(wl_index)) continue;
        if (mac == nullptr || maccmp(mac, station.mac) == 0) return 1;
    }
    return 0;
}

int wirelesss_get_wl_bh_sta(int32_t wl_mode, station_entry* entry) {
    if (entry == nullptr) return 0;
    station_list list;
    memset(&list, 0, sizeof list);
    list_stations_of_radio(wl_mode, list);
    for (const station_entry& station : stations_of(list)) {
        if ((station.wl_index & kClientBss) == 0) continue;
        *entry = station;
        return 1;
    }
    return 0;
}

int rt61_wireless_api_clear_station_info(const char* ifname) {
    if (ifname == nullptr) return 0;
    run_shell(Command<256>("/sbin/iwpriv %s set ResetCounter=1", ifname));
    return 0;
}

// (dBm + 90) x 2.5, without a lower bound.
int mt_rssi_to_pwr(int rssi) {
    const int64_t figure = (int64_t{rssi} + 90) * 5 / 2;
    return static_cast<int>(std::clamp(figure, int64_t{INT32_MIN}, int64_t{100}));
}
