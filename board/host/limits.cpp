#include "board/host/limits.h"

#include <arpa/inet.h>

#include <algorithm>

#include "board/model/switch_wiring.h"
#include "board/store/words.h"
#include "platform/records.h"

namespace board {
namespace {

using Words = std::span<const std::string>;

constexpr int kLastRadio = 1;
constexpr int kFirstWanPort = 0x10001;

// Of the fields whose last words these are. Each number of a list counts.
struct Range {
    std::string_view name;
    int first, last;
};
constexpr Range kRanges[] = {
    {"apcli_auth_mode",        0,  WIRELESS_AUTH_WPA1WPA2      },
    {"apcli_enable",           0,  1                           },
    {"apcli_encryption",       0,  WIRELESS_CIPHER_TKIPAES     },
    {"apcli_wan",              0,  1                           },
    {"apcli_wep_default_key",  0,  4                           },
    {"auth_mode",              0,  WIRELESS_AUTH_WPA1WPA2      },
    {"band_steering",          0,  1                           },
    {"bss_count",              0,  PLATFORM_BSS_MAX            },
    {"channel",                0,  196                         },
    {"default_config",         0,  1                           },
    {"easymesh",               0,  1                           },
    {"enabled",                0,  1                           },
    {"encryption",             0,  WIRELESS_CIPHER_TKIPAES     },
    {"igmp_proxy",             0,  1                           },
    {"iptv_config",            0,  1                           },
    {"lan_port_count",         0,  kSwitchPorts                },
    {"lan_switch_ports",       -1, kSwitchPorts - 1            },
    {"led_gpio",               -1, 102                         },
    {"led_silence",            0,  2                           },
    {"led_silence_end_hour",   0,  23                          },
    {"led_silence_start_hour", 0,  23                          },
    {"max_mac_filter",         0,  256                         },
    {"no_forwarding",          0,  1                           },
    {"radius_port",            0,  65535                       },
    {"sniff_port",             0,  kFirstWanPort + kSwitchPorts},
    {"ssid_broadcast",         0,  1                           },
    {"tx_power",               0,  100                         },
    {"wan_port_count",         0,  kSwitchPorts                },
    {"wan_switch_ports",       -1, kSwitchPorts - 1            },
    {"wep_default_key",        0,  4                           },
    {"wl_modes",               0,  kLastRadio                  },
};

bool is_mac(const std::string& text) {
    return to_mac(text).has_value();
}

bool is_mac_or_empty(const std::string& text) {
    return text.empty() || is_mac(text);
}

bool is_ipv4_or_empty(const std::string& text) {
    in_addr address;
    return text.empty() || ::inet_pton(AF_INET, text.c_str(), &address) == 1;
}

bool is_ssid(const std::string& text) {
    return text.size() <= 32;
}

constexpr struct {
    std::string_view name;
    bool (*fits)(const std::string& text);
} kTextLimits[] = {
    {"almac",       is_mac          },
    {"ap_mac",      is_mac_or_empty },
    {"apcli_bssid", is_mac_or_empty },
    {"apcli_ssid",  is_ssid         },
    {"lan_address", is_ipv4_or_empty},
    {"lan_gateway", is_ipv4_or_empty},
    {"lan_netmask", is_ipv4_or_empty},
    {"my_mac",      is_mac          },
    {"ssid",        is_ssid         },
};

bool is_port_setting(Words words) {
    if (words.size() != 4) return false;
    const bool is_fixed = words[1] == "fixed";
    const bool has_port = number_within(words[0], 1, kSwitchPorts) ||
                          number_within(words[0], kFirstWanPort, kFirstWanPort + kSwitchPorts - 1);
    return has_port && is_one_of(words[1], {"auto", "fixed", "loop", "loopoff", "off", "on"}) &&
           (is_one_of(words[2], {"10", "100", "1000"}) || (!is_fixed && words[2] == "-")) &&
           (is_one_of(words[3], {"full", "half"}) || (!is_fixed && words[3] == "-"));
}

bool is_mac_filter(Words words) {
    return words.size() == 4 && number_within(words[0], 0, kLastRadio) &&
           number_within(words[1], 0, PLATFORM_BSS_MAX - 1) &&
           (words[2] != "policy" || number_within(words[3], 0, 2));
}

}  // namespace

bool is_within_limits(std::string_view name, Words words) {
    if (name == "mac_filter") return is_mac_filter(words);
    if (name == "port") return is_port_setting(words);
    const std::string_view last = name.substr(name.rfind(' ') + 1);
    for (const Range& range : kRanges)
        if (range.name == last)
            return std::all_of(words.begin(), words.end(), [&range](const std::string& word) {
                return number_within(word, range.first, range.last).has_value();
            });
    for (const auto& [text, fits] : kTextLimits)
        if (text == last) return words.size() == 1 && fits(words[0]);
    return true;
}

}  // namespace board
