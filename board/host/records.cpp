// Wireless configuration records and system information blocks.
#include <algorithm>
#include <cstring>

#include "board/host/radio.h"
#include "board/store/journal.h"
#include "src/host/host.h"

using board::find_radio;
using board::Radio;
using board::state;

namespace {

wireless_conf* record_of(const char* ifname) {
    Radio* const radio = find_radio(ifname);
    if (radio == nullptr) return nullptr;
    return &radio->bss[static_cast<size_t>(board::bss_number(*radio, ifname))];
}

bool is_wifi_block(const void* block) {
    return block != nullptr && std::memcmp(block, state().wifi.data(), state().wifi.size()) == 0;
}

const board::Regulation* find_regulation(std::string_view country, int channel, int bandwidth_mhz) {
    for (const board::Regulation& row : state().regulations)
        if ((row.country.empty() || row.country == country) &&
            (row.channel == -1 || row.channel == channel) &&
            (row.bandwidth_mhz == -1 || row.bandwidth_mhz == bandwidth_mhz))
            return &row;
    return nullptr;
}

}  // namespace

extern "C" {

int read_wireless_conf(wireless_conf* record, const char* ifname) {
    const wireless_conf* const stored = record_of(ifname);
    if (stored == nullptr) return -1;
    *record = *stored;
    return 0;
}

int set_wireless_conf(const wireless_conf* record, const char* ifname) {
    board::journal({"set_wireless_conf", ifname});
    wireless_conf* const stored = record_of(ifname);
    if (stored == nullptr) return -1;
    *stored = *record;
    return 0;
}

int read_all_mbss_conf(const char* ifname, wireless_conf* records, int max) {
    const Radio* const radio = find_radio(ifname);
    if (radio == nullptr) return 0;
    const int count = std::clamp(radio->bss_count, 0, std::min(max, int{PLATFORM_BSS_MAX}));
    std::copy_n(radio->bss.begin(), count, records);
    return count;
}

const int32_t* get_wlm_list() {
    static std::vector<int32_t>* const list = new std::vector<int32_t>;
    *list = state().wl_modes;
    list->push_back(-1);
    return list->data();
}

int get_wl_mode_by_ifname(const char* ifname) {
    return board::wl_mode_of(ifname);
}

int get_si(const char* name, void* block) {
    const board::State& source = state();
    const struct {
        std::string_view name;
        const void* bytes;
        size_t size;
    } blocks[] = {
        {"hw",   &source.hw,         sizeof source.hw  },
        {"sw",   source.sw.data(),   source.sw.size()  },
        {"pi",   source.pi.data(),   source.pi.size()  },
        {"wifi", source.wifi.data(), source.wifi.size()},
    };
    for (const auto& row : blocks)
        if (row.name == name) {
            std::memcpy(block, row.bytes, row.size);
            return 0;
        }
    return -1;
}

int getsi_wifi_chipset_name(int, int wl_mode, char* name, int size) {
    const Radio* const radio = find_radio(wl_mode);
    if (radio == nullptr || radio->chipset.empty()) return 0;
    sf_strncpy(name, radio->chipset.c_str(), static_cast<size_t>(size));
    return 1;
}

int getsi_wifi_led_gpio(int, int wl_mode) {
    const Radio* const radio = find_radio(wl_mode);
    return radio == nullptr ? -1 : radio->led_gpio;
}

int get_wifi_regulated_pwr(const void* wifi, const char* country, int channel, int bandwidth_mhz) {
    const auto* const row = find_regulation(country, channel, bandwidth_mhz);
    return is_wifi_block(wifi) && row != nullptr ? row->power_percent : -1;
}

const regulated_eeprom_entry* get_wifi_regulated_eeprom(const void* wifi, const char* country,
                                                        int channel, int bandwidth_mhz) {
    const auto* const row = find_regulation(country, channel, bandwidth_mhz);
    return is_wifi_block(wifi) && row != nullptr && row->eeprom ? row->eeprom->data() : nullptr;
}

int hwinfo_get_max_macauth() {
    return state().max_mac_filter;
}

}  // extern "C"
