// The fields of each record by their names: record_of<TYPE>.
#pragma once

#include <array>
#include <type_traits>

#include "call/record.h"
#include "host/field_tables.h"
#include "platform/platform.h"

namespace boardctl {

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

template <class Type>
consteval Field make_field(const char* name, size_t offset) {
    using Element = std::remove_extent_t<Type>;
    constexpr size_t kCount = std::extent_v<Type>;
    if constexpr (record_of<Element> != nullptr)
        return {name, offset, Shape::record, sizeof(Element), kCount, record_of<Element>};
    else if constexpr (kCount != 0 && std::is_same_v<Element, char>)
        return {name, offset, Shape::text, kCount};
    else if constexpr (kCount != 0 && std::is_same_v<Element, uint8_t>)
        return {name, offset, std::string_view(name) == "mac" ? Shape::mac : Shape::bytes, kCount};
    else
        return {name, offset, number_shape<Element>(), sizeof(Element), kCount};
}

// The virtual host's tables; their numbers are 32 bits wide and signed.
template <size_t kCount>
consteval std::array<Field, kCount> host_fields(const board::RecordField (&rows)[kCount]) {
    std::array<Field, kCount> fields = {};
    for (size_t i = 0; i < kCount; ++i) {
        if (!rows[i].text && rows[i].width != sizeof(int32_t)) throw "a number of another width";
        const Shape shape = rows[i].text ? Shape::text : Shape::i32;
        fields[i] = {rows[i].name, rows[i].offset, shape, rows[i].width};
    }
    return fields;
}

#define FIELD(type, member) make_field<decltype(type::member)>(#member, offsetof(type, member))

#define NAME_RECORD(type)                                                               \
    inline constexpr Record k_##type = {#type, sizeof(struct type), k_##type##_fields}; \
    template <>                                                                         \
    inline constexpr const Record* record_of<struct type> = &k_##type

#define RECORD(type, ...)                                       \
    inline constexpr Field k_##type##_fields[] = {__VA_ARGS__}; \
    NAME_RECORD(type)

inline constexpr auto k_wireless_conf_fields = host_fields(board::kConfFields);
NAME_RECORD(wireless_conf);

inline constexpr auto k_channel_spec_fields = host_fields(board::kChannelFields);
NAME_RECORD(channel_spec);

RECORD(vendor_element, FIELD(vendor_element, first), FIELD(vendor_element, second),
       FIELD(vendor_element, third), FIELD(vendor_element, text));

RECORD(ap_entry, FIELD(ap_entry, ssid), FIELD(ap_entry, bssid), FIELD(ap_entry, channel),
       FIELD(ap_entry, signal), FIELD(ap_entry, rssi), FIELD(ap_entry, seen_at),
       FIELD(ap_entry, network_type), FIELD(ap_entry, encryption), FIELD(ap_entry, auth_mode),
       FIELD(ap_entry, flags), FIELD(ap_entry, element));

RECORD(ap_list, FIELD(ap_list, count), FIELD(ap_list, type), FIELD(ap_list, ifname),
       FIELD(ap_list, channel_check), FIELD(ap_list, entries));

RECORD(station_entry, FIELD(station_entry, mac), FIELD(station_entry, wl_index),
       FIELD(station_entry, column3), FIELD(station_entry, column8), FIELD(station_entry, column9),
       FIELD(station_entry, column10), FIELD(station_entry, column9_v2),
       FIELD(station_entry, column10_v2), FIELD(station_entry, column6),
       FIELD(station_entry, column7), FIELD(station_entry, chain_best), FIELD(station_entry, chain),
       FIELD(station_entry, ssid));

RECORD(station_list, FIELD(station_list, count), FIELD(station_list, type),
       FIELD(station_list, ifname), FIELD(station_list, entries));

RECORD(dfs_info, FIELD(dfs_info, rd_mode), FIELD(dfs_info, channel_moving_time),
       FIELD(dfs_info, remaining));

RECORD(wps_start_request, FIELD(wps_start_request, use_pin), FIELD(wps_start_request, pin));

RECORD(wsc_peer_info, FIELD(wsc_peer_info, state), FIELD(wsc_peer_info, time),
       FIELD(wsc_peer_info, manufacturer), FIELD(wsc_peer_info, model_name),
       FIELD(wsc_peer_info, device_name), FIELD(wsc_peer_info, model_number),
       FIELD(wsc_peer_info, serial_number));

RECORD(port_setting, FIELD(port_setting, mode), FIELD(port_setting, speed),
       FIELD(port_setting, duplex));

RECORD(port_counters, FIELD(port_counters, rx_packets), FIELD(port_counters, rx_bytes),
       FIELD(port_counters, rx_broadcast), FIELD(port_counters, rx_multicast),
       FIELD(port_counters, zero0), FIELD(port_counters, rx_dropped),
       FIELD(port_counters, rx_crc_errors), FIELD(port_counters, zero1),
       FIELD(port_counters, tx_packets), FIELD(port_counters, tx_bytes),
       FIELD(port_counters, tx_broadcast), FIELD(port_counters, tx_multicast),
       FIELD(port_counters, tx_collisions));

RECORD(switch_mac_entry, FIELD(switch_mac_entry, mac), FIELD(switch_mac_entry, info),
       FIELD(switch_mac_entry, port_map));

RECORD(wired_station, FIELD(wired_station, kind), FIELD(wired_station, mac),
       FIELD(wired_station, user_port));

RECORD(platform_driver, FIELD(platform_driver, reserved0),
       FIELD(platform_driver, refresh_non_ipv4_input_rule), FIELD(platform_driver, reserved1));

#undef RECORD
#undef NAME_RECORD
#undef FIELD

}  // namespace boardctl
