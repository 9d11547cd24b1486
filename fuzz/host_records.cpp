// The host's records with any bytes: texts may fill their fields, numbers may be anything.
#include "fuzz/target.h"
#include "platform/gpio.h"
#include "platform/profile.h"
#include "platform/switch.h"
#include "platform/wireless.h"
#include "platform/wps.h"

using namespace fuzz_target;

namespace {

void fill_state(Pieces& input) {
    board::State& host = board::state();
    host = board::factory_state();
    fill(host.hw, input.next());
    host.hw.lan_port_count %= 20;  // of any sign, but not an hour of work
    host.hw.wan_port_count %= 20;
    fill(host.sw, input.next());
    fill(host.pi, input.next());
    fill(host.element, input.next());
    const std::string_view records = input.next();
    for (board::Radio& radio : host.radios) fill(radio.bss, records);
    std::vector<mac_filter_entry> entries(records.size() % 300);
    for (mac_filter_entry& entry : entries) fill(entry, records);
    host.mac_filters[0] = {1, entries};
    host.max_mac_filter = 300;
    host.my_mac = host.lan_address = host.wsc_device_name = input.text();
}

// A host writes a profile with a line for each key: none of the library's may hold a line feed.
void claim_one_line(std::string_view key, std::string_view value) {
    CLAIM(key.find_first_of("=\n") == key.npos && value.find('\n') == value.npos);
}

int set_value(genconfig_list* list, const char* key, const char* value) {
    claim_one_line(key, value);
    return genconfig_set_value(list, key, value);
}

int set_value_direct(const char* path, const char* key, const char* value) {
    claim_one_line(key, value);
    return genconfig_set_value_direct(path, key, value);
}

}  // namespace

void fuzz(Pieces& input) {
    static const harness::LibraryHook set("genconfig_set_value", set_value);
    static const harness::LibraryHook set_direct("genconfig_set_value_direct", set_value_direct);
    fill_state(input);
    for (const int32_t wl_mode : {0, 1}) init_mtk_wlif(wl_mode);
    platform_set_wireless(nullptr, "ra0");
    mtk_tpc_patch();
    wireless_apply_macauth(0);
    wireless_wps_stop(nullptr);
    wireless_restart_8021xd();
    reinit_vlan();
    set_iptv_system(1);
    set_sniff_port(1);
    init_portconfig();
    init_gpio_after_insmod();
    platform_all_usb_led_control(1);
    platform_all_wl_led_control(0);
    set_port_led_all(1);
    wsc_profile_update();

    wireless_conf records[PLATFORM_BSS_MAX] = {};
    const int count = set_quolex_helper_bss(records, 2);
    CLAIM(count >= 3 && count <= PLATFORM_BSS_MAX);
    for (const wireless_conf& record : records) CLAIM(is_terminated(record.ssid));
    for (const char* path : harness::kProfilePath) CLAIM(board::path_exists(path));
}
