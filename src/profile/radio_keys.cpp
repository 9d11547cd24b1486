#include "src/host/factory_mode.h"
#include "src/host/host_buffer.h"
#include "src/profile/sections.h"
#include "src/support/message.h"
#include "src/support/table.h"

namespace platform {
namespace {

struct ModeRow {
    int32_t wireless_mode;
    int32_t basic_rate;
    int32_t driver_mode;
};

// A mode without a row leaves the driver's mode as it was.
constexpr ModeRow kModes[] = {
    {1,  15,  0 }, // b/g
    {2,  3,   1 }, // b
    {3,  351, 4 }, // g
    {4,  351, 6 }, // n, 2.4 GHz
    {5,  351, 7 }, // g/n
    {6,  15,  9 }, // b/g/n
    {9,  15,  8 }, // a/n
    {10, 15,  14}, // a/n/ac
    {11, 15,  14}, // a/n/ac
};
static_assert(is_key(kModes, &ModeRow::wireless_mode));

void set_mode_keys(ProfileList& profile, int32_t wireless_mode) {
    const ModeRow* row = find_row(kModes, &ModeRow::wireless_mode, wireless_mode);
    if (row == nullptr) return;
    profile.set("BasicRate", row->basic_rate);
    profile.set("WirelessMode", row->driver_mode);
}

void set_region_keys(ProfileList& profile, const wireless_conf& radio) {
    profile.set("CountryRegion", field_text(radio.country_code) == "JP" ? 5 : 1);
    profile.set("BssidNum", PLATFORM_BSS_MAX);
    profile.set("IEEE80211H", 0);
    profile.set("CountryCode", "");
    profile.set("CountryRegionABand", 7);
    if (radio.dfs_enable != 1) return;
    profile.set("CountryRegionABand", 13);
    profile.set("IEEE80211H", 1);
    profile.set("DfsEnable", 1);
    profile.set("RDRegion", "CE");
    profile.set_field("CountryCode", radio.country_code);
}

// The power to set, in percent: the wanted one within the regulatory limit.
uint32_t tx_power(const wireless_conf& radio, int limit) {
    const uint32_t wanted = static_cast<uint32_t>(radio.tx_power);
    return static_cast<uint32_t>(limit) * wanted / 100;
}

// "first:second," for every entry in use; entries past the buffer's end are left out.
void list_overrides(const regulated_eeprom_entry* table, Text& list) {
    for (int i = 0; i < REGULATED_EEPROM_ENTRIES; ++i) {
        if (table[i].in_use == 0) continue;
        TextBuffer<32> entry;
        entry.put_hex(static_cast<uint32_t>(table[i].first), 2).put(':');
        entry.put_hex(static_cast<uint32_t>(table[i].second), 2).put(',');
        list.put(entry.view());
    }
}

}  // namespace

void set_radio_keys(ProfileList& profile, const wireless_conf& radio) {
    set_mode_keys(profile, radio.wireless_mode);
    set_region_keys(profile, radio);
    profile.set("Channel", radio.channel);
    profile.set("HT_EXTCHA", radio.ext_channel < radio.channel ? "0;0;0;0" : "1;1;1;1");
    profile.set("AutoChannelSelect", radio.channel == 0);
    profile.set("BeaconPeriod", radio.beacon_period);
    profile.set("BGProtection", radio.bg_protection);
    profile.set("TxBurst", radio.tx_burst);
    profile.set("TxBurstSlotTime", radio.tx_burst_slot_time);
    profile.set("PktAggregate", radio.pkt_aggregate);
    profile.set("ShortSlot", radio.short_slot);
    profile.set("HSCounter", 1);
    profile.set("VHT_BW", radio.bandwidth == 80);
    profile.set("VHT_SGI", 1);
    profile.set("HT_BW", radio.bandwidth != 20);
    profile.set("HT_RDG", radio.ht_rdg);
    profile.set("DtimPeriod", radio.dtim_period);
    profile.set("HT_BSSCoexistence", radio.bandwidth == 0);
    profile.set("ETxBfEnCond", radio.beamforming & 1);
    profile.set("ITxBfEn", radio.beamforming >> 1 & 1);
    profile.set("MUTxRxEnable", radio.beamforming >> 2 & 1);
    profile.set("PMFMFPC", 0);
    profile.set("PMFMFPR", 0);
    profile.set("PMFSHA256", 0);
}

void set_power_keys(ProfileList& profile, const wireless_conf& radio) {
    HostBuffer<uint8_t[PLATFORM_SYSINFO_SIZE]> wifi;
    get_si("wifi", wifi.block);
    const TextCopy<sizeof radio.country_code + 1> country(field_text(radio.country_code));
    int limit = get_wifi_regulated_pwr(wifi.block, country.c_str(), radio.channel, radio.bandwidth);
    if (limit == -1) limit = 100;
    const int32_t power =
        in_factory_mode() ? radio.tx_power : static_cast<int32_t>(tx_power(radio, limit));
    print_error("Tx Power for Channel %d -> %d\n", radio.channel, power);
    profile.set("TxPower", power);
    profile.set("PERCENTAGEenable", power != 100);

    const regulated_eeprom_entry* table =
        get_wifi_regulated_eeprom(wifi.block, country.c_str(), radio.channel, radio.bandwidth);
    if (table == nullptr || in_factory_mode()) return;
    TextBuffer<256> overrides;
    list_overrides(table, overrides);
    profile.set("EEPROM_OVERRIDE", overrides);
}

}  // namespace platform
