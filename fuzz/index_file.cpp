// The radio index file and the interface names that are looked up in it.
#include "platform/wlmap.h"

#include "fuzz/target.h"
#include "platform/flash.h"
#include "platform/records.h"
#include "src/wlmap/l1profile.h"

using namespace fuzz_target;

namespace {

void look_names_up(int32_t wl_mode) {
    CLAIM(std::strlen(get_wl_ifname_by_wlmode(wl_mode)) < platform::kL1ValueSize);
    CLAIM(std::strlen(get_racfg_filename(wl_mode)) < platform::kL1ValueSize);
    const std::string_view client = get_wl_bridge_ifname_by_wlmode(wl_mode);
    CLAIM(client.size() < platform::kL1ValueSize && client.ends_with('0'));
}

void form_name(uint32_t wl_index) {
    Output<char[PLATFORM_IFNAME_SIZE]> name;
    const int formed = wireless_api_get_ifname(wl_index, *name.get());
    CLAIM(formed == 1 ? is_terminated(*name.get()) : name.untouched());
    CLAIM(formed == 0 || std::string_view(get_wl_ifname(wl_index)) == *name.get());
    CLAIM(formed == 1 || *get_wl_ifname(wl_index) == '\0');
}

}  // namespace

void fuzz(Pieces& input) {
    Exact ifname(input.text());
    outside().index = input.rest();
    for (const int32_t wl_mode : {0, 1, 999, -1}) look_names_up(wl_mode);
    for (const uint32_t wl_index : {0U, 3U, 0x10001U, 0xFFFFFFFFU}) form_name(wl_index);
    get_wl_idx_by_ifname(ifname.c_str());
    get_wl_mode_by_ifname2(ifname.c_str());
    check_eeprom();
    extract_eeprom();
}
