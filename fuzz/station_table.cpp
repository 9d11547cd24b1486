// The driver's station table.
#include "src/wireless/station_table.h"
#include "fuzz/target.h"
#include "platform/wireless.h"
#include "src/support/number.h"

using namespace fuzz_target;

namespace {

void expect_sound(const station_list& list) {
    CLAIM(list.count <= STATION_LIST_MAX && list.type == STATION_LIST_TYPE);
    for (uint32_t i = 0; i < list.count; ++i) {
        CLAIM(is_terminated(list.entries[i].mac));
        CLAIM(std::strlen(list.entries[i].mac) < sizeof list.entries[i].mac);
    }
}

}  // namespace

void fuzz(Pieces& input) {
    std::string mac = input.text();
    outside().text = input.rest();
    CLAIM(platform::leading_unsigned(mac) == std::strtoull(mac.c_str(), nullptr, 10));

    Output<station_list> list;
    std::memcpy(list->ifname, "ra0", 4);
    CLAIM(wireless_api_get_station_list(list.get()) == 0);
    expect_sound(*list.get());
    CLAIM(list.untouched(offsetof(station_list, entries) + list->count * sizeof(station_entry)));

    Output<station_entry> entry;
    CLAIM(wirelesss_get_wl_bh_sta(0, entry.get()) == 1 || entry.untouched());
    Exact text(mac);
    wireless_api_check_station_exist("ra1", text.c_str());

    Output<station_list> unterminated;
    std::memset(unterminated->ifname, 'x', sizeof unterminated->ifname);
    wireless_api_get_station_list(unterminated.get());
    expect_sound(*unterminated.get());
}
