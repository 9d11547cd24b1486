// The names of the state's fields, in the order in which they are written.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include "board/host/state.h"
#include "border/record_fields.h"

namespace board {

struct RecordField {
    const char* name;
    size_t offset;
    size_t width;
    bool text;
};

template <class Type>
constexpr RecordField record_field(const char* name, size_t offset) {
    return {name, offset, sizeof(Type), std::is_array_v<Type>};
}

#define FIELD(record, member)                                                  \
    record_field<std::remove_reference_t<decltype((record::member))>>(#member, \
                                                                      offsetof(record, member))

// A record that also crosses the border; its numbers are 32 bits wide and signed.
template <class Type, size_t kCount = border::record_of<Type>->fields.size()>
consteval std::array<RecordField, kCount> crossing_fields() {
    std::array<RecordField, kCount> rows = {};
    for (size_t i = 0; i < kCount; ++i) {
        const border::Field& field = border::record_of<Type>->fields[i];
        const bool text = field.shape == border::Shape::text;
        if (!text && field.shape != border::Shape::i32) throw "a field of another shape";
        rows[i] = {field.name, field.offset, field.width, text};
    }
    return rows;
}
inline constexpr auto kConfFields = crossing_fields<wireless_conf>();
inline constexpr auto kChannelFields = crossing_fields<channel_spec>();

#define HW(member) FIELD(hw_info, member)
inline constexpr RecordField kHardwareFields[] = {
    HW(switch_chip),      HW(tpc_2g.enable),     HW(tpc_2g.value),     HW(tpc_2g.duty),
    HW(tpc_5g.enable),    HW(tpc_5g.value),      HW(tpc_5g.duty),      HW(usb_count),
    HW(run_led_gpio),     HW(reset_button_gpio), HW(wps_button_gpio),  HW(wl_led[0].gpio),
    HW(wl_led[0].driven), HW(wl_led[1].gpio),    HW(wl_led[1].driven), HW(usb_led_gpio[0]),
    HW(usb_led_gpio[1]),  HW(lan_port_count),    HW(wan_port_count),   HW(iptv_port),
};
#undef HW

inline constexpr RecordField kHelperFields[] = {
    {"present", SW_INFO_HELPER_PRESENT, sizeof(int32_t),                              false},
    {"ssid",    SW_INFO_HELPER_SSID,    SW_INFO_HELPER_SECURED - SW_INFO_HELPER_SSID, true },
    {"secured", SW_INFO_HELPER_SECURED, sizeof(int32_t),                              false},
    {"key",     SW_INFO_HELPER_KEY,     108,                                          true },
    {"hidden",  SW_INFO_HELPER_HIDDEN,  sizeof(int32_t),                              false},
};

template <class Owner, class Value>
struct Member {
    const char* name;
    Value Owner::*place;
};

inline constexpr Member<State, int> kNumbers[] = {
    {"max_mac_filter", &State::max_mac_filter},
    {"default_config", &State::default_config},
    {"igmp_proxy",     &State::igmp_proxy    },
    {"easymesh",       &State::easymesh      },
    {"band_steering",  &State::band_steering },
    {"iptv_config",    &State::iptv_config   },
    {"sniff_port",     &State::sniff_port    },
    {"scan_polls",     &State::scan_polls    },
};

inline constexpr Member<State, std::string> kTexts[] = {
    {"my_mac",             &State::my_mac            },
    {"lan_address",        &State::lan_address       },
    {"lan_netmask",        &State::lan_netmask       },
    {"lan_gateway",        &State::lan_gateway       },
    {"almac",              &State::almac             },
    {"wsc_device_name",    &State::wsc_device_name   },
    {"band_steering_ssid", &State::band_steering_ssid},
};

inline constexpr Member<State, std::vector<int32_t>> kLists[] = {
    {"wl_modes",         &State::wl_modes        },
    {"lan_switch_ports", &State::lan_switch_ports},
    {"wan_switch_ports", &State::wan_switch_ports},
};

inline constexpr Member<Radio, std::string> kRadioTexts[] = {
    {"main_ifname",   &Radio::main_ifname  },
    {"bss_prefix",    &Radio::bss_prefix   },
    {"client_prefix", &Radio::client_prefix},
    {"chipset",       &Radio::chipset      },
};

#undef FIELD

}  // namespace board
