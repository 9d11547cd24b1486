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

// As the host writes a profile, a line for each key, it has one line of each key that the library
// set and no other.
void check_profiles() {
    CLAIM(outside().profiles.size() == 2);
    for (const auto& [path, keys] : outside().profiles) {
        std::string text;
        for (const auto& [key, value] : keys) text += key + '=' + value + '\n';
        std::string_view rest = text;
        for (const auto& [key, value] : keys) {
            const std::string_view line = rest.substr(0, rest.find('\n'));
            CLAIM(line.substr(0, line.find('=')) == key);
            rest.remove_prefix(line.size() + 1);
        }
        CLAIM(rest.empty());
    }
}

}  // namespace

void fuzz(Pieces& input) {
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
    check_profiles();
}
