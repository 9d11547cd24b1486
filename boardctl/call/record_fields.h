// The fields of each record by their names: record_of<TYPE>.
#pragma once

#include <array>
#include <type_traits>

#include "board/host/field_tables.h"
#include "boardctl/call/record.h"
#include "platform/platform.h"

namespace boardctl::calls {

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

#define NAME_RECORD(type)                                                               \
    inline constexpr Record k_##type = {#type, sizeof(struct type), k_##type##_fields}; \
    template <>                                                                         \
    inline constexpr const Record* record_of<struct type> = &k_##type

#define FIELD(type, member) make_field<decltype(type::member)>(#member, offsetof(type, member))

// FIELD() of each member in turn; the preprocessor has no other way to repeat.
#define EACH(type, member, ...) \
    FIELD(type, member) __VA_OPT__(, EACH_MORE PARENS(type, __VA_ARGS__))
#define EACH_MORE() EACH
#define PARENS ()
#define EXPAND(...) EXPAND1(EXPAND1(EXPAND1(EXPAND1(__VA_ARGS__))))
#define EXPAND1(...) EXPAND2(EXPAND2(EXPAND2(EXPAND2(__VA_ARGS__))))
#define EXPAND2(...) __VA_ARGS__

#define RECORD(type, ...)                                                           \
    inline constexpr Field k_##type##_fields[] = {EXPAND(EACH(type, __VA_ARGS__))}; \
    NAME_RECORD(type)

inline constexpr auto k_wireless_conf_fields = host_fields(board::kConfFields);
NAME_RECORD(wireless_conf);

inline constexpr auto k_channel_spec_fields = host_fields(board::kChannelFields);
NAME_RECORD(channel_spec);

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
#undef NAME_RECORD
#undef EXPAND2
#undef EXPAND1
#undef EXPAND
#undef PARENS
#undef EACH_MORE
#undef EACH
#undef FIELD

}  // namespace boardctl::calls
