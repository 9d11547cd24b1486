// The state of a router as it leaves the factory.
#include <cstdio>
#include <cstring>
#include <numeric>
#include <span>

#include "board/host/state.h"
#include "board/model/interfaces.h"
#include "src/host/host.h"

namespace board {
namespace {

void put_text(std::span<char> field, std::string_view text) {
    std::snprintf(field.data(), field.size(), "%.*s", static_cast<int>(text.size()), text.data());
}

void put_number(InfoBlock& block, size_t offset, int32_t number) {
    std::memcpy(block.data() + offset, &number, sizeof number);
}

struct BandDefaults {
    int32_t wireless_mode;
    channel_spec channel;
    int32_t bandwidth;
    int32_t beamforming;
    int32_t stream_count;
};

wireless_conf radio_record(const BandDefaults& band) {
    wireless_conf record{};
    record.wireless_mode = band.wireless_mode;
    record.channel = band.channel.channel;
    record.ext_channel = band.channel.ext_channel;
    record.channel_rest[0] = band.channel.frequency_mhz;
    record.channel_rest[2] = band.channel.bandwidth_mhz;
    record.tx_power = 100;
    record.rts_threshold = 2347;
    record.frag_threshold = 2346;
    record.tx_burst = 1;
    record.tx_burst_slot_time = 32;
    record.beacon_period = 100;
    record.pkt_aggregate = 1;
    record.short_slot = 1;
    record.apcli_auth_mode = WIRELESS_AUTH_WPA2PSK;
    record.apcli_encryption = WIRELESS_CIPHER_AES;
    record.bandwidth = band.bandwidth;
    record.ht_rdg = 1;
    record.wmm_capable = 1;
    record.apsd_capable = 1;
    record.dtim_period = 1;
    put_text(record.country_code, "JP");
    record.wps_enable = 1;
    record.igmp_snoop = 1;
    record.beamforming = band.beamforming;
    record.stream_count = band.stream_count;
    return record;
}

void add_bss(Radio& radio, wireless_conf record, std::string_view ssid, std::string_view key) {
    record.enabled = 1;
    put_text(record.ssid, ssid);
    record.ssid_broadcast = 1;
    record.auth_mode = WIRELESS_AUTH_WPA2PSK;
    record.encryption = WIRELESS_CIPHER_AES;
    record.wep_default_key = 1;
    put_text(record.wpa_psk, key);
    record.no_forwarding = radio.bss_count > 0;  // guests do not see each other
    record.bss_index = radio.bss_count;
    radio.bss[static_cast<size_t>(radio.bss_count++)] = record;
}

Radio radio_2g() {
    Radio radio;
    radio.main_ifname = "ra0";
    radio.bss_prefix = "ra";
    radio.client_prefix = "apcli";
    radio.chipset = "mt7615";
    radio.led_gpio = 21;
    radio.valid_channels.resize(13);
    std::iota(radio.valid_channels.begin(), radio.valid_channels.end(), 1);
    radio.best_channel = {6, 10, 2437, 0, 40};
    const wireless_conf record = radio_record(
        {.wireless_mode = 6, .channel = {}, .bandwidth = 40, .beamforming = 0, .stream_count = 2});
    add_bss(radio, record, "home-2g", "factory-passphrase");
    add_bss(radio, record, "home-2g-guest", "guest-passphrase");
    return radio;
}

Radio radio_5g() {
    Radio radio;
    radio.main_ifname = "rai0";
    radio.bss_prefix = "rai";
    radio.client_prefix = "apclii";
    radio.chipset = "mt7615";
    radio.led_gpio = 22;
    radio.valid_channels = {36, 40, 44, 48, 52, 56, 60, 64, 100, 104, 108, 112, 116, 120, 124, 128};
    radio.best_channel = {44, 48, 5220, 0, 80};
    const wireless_conf record = radio_record({
        .wireless_mode = 11,
        .channel = {36, 40, 5180, 0, 80},
        .bandwidth = 80,
        .beamforming = 5,
        .stream_count = 4
    });
    add_bss(radio, record, "home-5g", "factory-passphrase");
    add_bss(radio, record, "home-5g-guest", "guest-passphrase");
    return radio;
}

hw_tpc power_control(std::string_view value, std::string_view duty) {
    hw_tpc tpc{};
    tpc.enable = 1;
    put_text(tpc.value, value);
    put_text(tpc.duty, duty);
    return tpc;
}

hw_info hardware() {
    hw_info hw{};
    put_text(hw.switch_chip, "mt7531");
    hw.tpc_2g = power_control("105:100:95:5", "100:70:50:30:10");
    hw.tpc_5g = power_control("110:105:100:5", "100:60:40:20:10");
    hw.usb_count = 1;
    hw.run_led_gpio = 18;
    hw.reset_button_gpio = 62;
    hw.wps_button_gpio = 63;
    hw.wl_led[0].gpio = 21;
    hw.wl_led[1].gpio = 22;
    for (hw_wl_led& led : hw.wl_led) put_text(led.driven, "gpio");
    for (int32_t& gpio : hw.usb_led_gpio) gpio = -1;
    hw.usb_led_gpio[0] = 23;
    hw.lan_port_count = 4;
    hw.wan_port_count = 1;
    hw.iptv_port = 4;
    return hw;
}

}  // namespace

State factory_state() {
    State fresh;
    fresh.wl_modes = {0, 1};
    fresh.radios = {radio_2g(), radio_5g()};
    fresh.hw = hardware();
    set_model_name(fresh, "Quolex R2400");
    set_helper_bss(fresh, 0, {"setup-helper", true, "setup-passphrase", false});
    put_text(fresh.wifi, "regulatory data of this board");
    fresh.max_mac_filter = 64;
    fresh.my_mac = "00:9F:33:10:20:30";
    fresh.lan_address = "192.168.1.1";
    fresh.lan_netmask = "255.255.255.0";
    fresh.wan_types = {
        {"wan1", "dynamic"}
    };
    fresh.default_config = 1;
    fresh.almac = "00:9F:33:10:20:32";
    fresh.wsc_device_name = "R2400 access point";
    fresh.element = {
        {0x10,  0x20, 0x30, 0x40},
        { 0x00, 0x9f, 0x33, 0x10, 0x20, 0x30},
        { 0x00, 0x9f, 0x33, 0x10, 0x20, 0x32},
        { 'r',  'o',   'u',  't',  'e', 'r'}
    };
    fresh.lan_switch_ports = {0, 1, 2, 3};
    fresh.wan_switch_ports = {4};
    fresh.scan_polls = 1;
    return fresh;
}

State& state() {
    static State* const current = new State(factory_state());
    return *current;
}

mac_filter_entry filter_entry(const std::string& mac) {
    mac_filter_entry entry{};
    strtomac(mac.c_str(), entry.mac);
    return entry;
}

void set_model_name(State& target, const std::string& name) {
    put_text(target.pi, name);
}

void set_helper_bss(State& target, int entry, const HelperBss& helper) {
    const size_t base = entry == 0 ? 0 : SW_INFO_HELPER_STRIDE;
    const auto text = [&](size_t offset, size_t width, const std::string& value) {
        put_text(std::span(target.sw).subspan(base + offset, width), value);
    };
    put_number(target.sw, base + SW_INFO_HELPER_PRESENT, 1);
    text(SW_INFO_HELPER_SSID, SW_INFO_HELPER_SECURED - SW_INFO_HELPER_SSID, helper.ssid);
    put_number(target.sw, base + SW_INFO_HELPER_SECURED, helper.secured);
    text(SW_INFO_HELPER_KEY, 108, helper.key);
    put_number(target.sw, base + SW_INFO_HELPER_HIDDEN, helper.hidden);
}

void remove_second_helper_bss(State& target) {
    put_number(target.sw, SW_INFO_HELPER_STRIDE + SW_INFO_HELPER_PRESENT, 0);
}

void create_interfaces(const State& source) {
    create_interface("eth0");
    for (const Radio& radio : source.radios) {
        create_interface(radio.main_ifname);
        for (int number = 0; number < PLATFORM_BSS_MAX; ++number)
            create_interface(radio.bss_prefix + std::to_string(number));
        create_interface(radio.client_prefix + "0");
    }
}

}  // namespace board
