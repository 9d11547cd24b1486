// The fields of each record by their names: record_of<TYPE>.
#pragma once

#include <string_view>
#include <type_traits>

#include "border/record.h"
#include "platform/platform.h"

namespace border {

template <class Type>
inline constexpr const Record* record_of = nullptr;

template <class Type>
consteval Shape number_shape() {
    if (std::is_same_v<Type, int32_t>) return Shape::i32;
    if (std::is_same_v<Type, uint32_t>) return Shape::u32;
    if (std::is_same_v<Type, uint64_t>) return Shape::u64;
    if (std::is_same_v<Type, uint8_t>) return Shape::u8;
    if (std::is_same_v<Type, platform_slot>) return Shape::slot;
    throw "a type without a shape";
}

constexpr bool is_secret(std::string_view name) {
    for (const std::string_view start :
         {"wep_key[", "wpa_psk", "apcli_wep_key[", "apcli_wpa_psk", "radius_key", "pin"})
        if (name.starts_with(start)) return true;
    return false;
}

template <class Type>
consteval Field make_field(const char* name, size_t offset) {
    using Element = std::remove_extent_t<Type>;
    constexpr size_t kCount = std::extent_v<Type>;
    const bool secret = is_secret(name);
    if constexpr (record_of<Element> != nullptr)
        return {name, offset, Shape::record, sizeof(Element), kCount, record_of<Element>};
    else if constexpr (kCount != 0 && std::is_same_v<Element, char>)
        return {name, offset, Shape::text, kCount, 0, nullptr, secret};
    else if constexpr (kCount != 0 && std::is_same_v<Element, uint8_t>)
        return {name, offset, std::string_view(name) == "mac" ? Shape::mac : Shape::bytes, kCount};
    else
        return {name, offset, number_shape<Element>(), sizeof(Element), kCount, nullptr, secret};
}

#define FIELD(type, member) \
    make_field<std::remove_reference_t<decltype(type::member)>>(#member, offsetof(type, member))

// FIELD() of each member in turn; the preprocessor has no other way to repeat.
#define EACH(type, member, ...) \
    FIELD(type, member) __VA_OPT__(, EACH_MORE PARENS(type, __VA_ARGS__))
#define EACH_MORE() EACH
#define PARENS ()
#define EXPAND(...) EXPAND1(EXPAND1(EXPAND1(EXPAND1(__VA_ARGS__))))
#define EXPAND1(...) EXPAND2(EXPAND2(EXPAND2(EXPAND2(__VA_ARGS__))))
#define EXPAND2(...) EXPAND3(EXPAND3(EXPAND3(EXPAND3(__VA_ARGS__))))
#define EXPAND3(...) __VA_ARGS__

#define RECORD(type, ...)                                                               \
    inline constexpr Field k_##type##_fields[] = {EXPAND(EACH(type, __VA_ARGS__))};     \
    inline constexpr Record k_##type = {#type, sizeof(struct type), k_##type##_fields}; \
    template <>                                                                         \
    inline constexpr const Record* record_of<struct type> = &k_##type

RECORD(wireless_conf, enabled, ssid, wireless_mode, channel, ext_channel, channel_rest[0],
       channel_rest[1], channel_rest[2], ssid_broadcast, auth_mode, encryption, wep_default_key,
       wep_key_format, wep_key[0], wep_key[1], wep_key[2], wep_key[3], wpa_psk, tx_power,
       bg_protection, tx_preamble, rts_threshold, frag_threshold, tx_burst, tx_burst_slot_time,
       beacon_period, pkt_aggregate, short_slot, apcli_enable, apcli_ssid, apcli_bssid,
       apcli_auth_mode, apcli_encryption, apcli_wep_default_key, apcli_wep_key_format,
       apcli_wep_key[0], apcli_wep_key[1], apcli_wep_key[2], apcli_wep_key[3], apcli_wpa_psk,
       apcli_wan, wwan_ifname, bandwidth, ht_rdg, no_forwarding, wmm_capable, apsd_capable,
       dtim_period, country_code, bss_index, wps_configured, wps_enable, wps_configured2,
       dfs_enable, igmp_snoop, radius_server, radius_key, radius_port, beamforming, stream_count);

RECORD(channel_spec, channel, ext_channel, frequency_mhz, reserved, bandwidth_mhz);

RECORD(vendor_element, first, second, third, text);

RECORD(ap_entry, ssid, bssid, channel, signal, rssi, seen_at, network_type, encryption, auth_mode,
       flags, element);

RECORD(ap_list, count, type, ifname, channel_check, entries);

RECORD(station_entry, mac, wl_index, column3, column8, column9, column10, column9_v2, column10_v2,
       column6, column7, chain_best, chain, ssid);

RECORD(station_list, count, type, ifname, entries);

RECORD(dfs_info, rd_mode, channel_moving_time, remaining);

RECORD(wps_start_request, use_pin, pin);

RECORD(wsc_peer_info, state, time, manufacturer, model_name, device_name, model_number,
       serial_number);

RECORD(port_setting, mode, speed, duplex);

RECORD(port_counters, rx_packets, rx_bytes, rx_broadcast, rx_multicast, zero0, rx_dropped,
       rx_crc_errors, zero1, tx_packets, tx_bytes, tx_broadcast, tx_multicast, tx_collisions);

RECORD(switch_mac_entry, mac, info, port_map);

RECORD(wired_station, kind, mac, user_port);

RECORD(platform_driver, reserved0, refresh_non_ipv4_input_rule, reserved1);

#undef RECORD
#undef EXPAND3
#undef EXPAND2
#undef EXPAND1
#undef EXPAND
#undef PARENS
#undef EACH_MORE
#undef EACH
#undef FIELD

}  // namespace border
