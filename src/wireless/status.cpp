#include <string.h>

#include <algorithm>

#include "platform/wireless.h"
#include "src/driver/answer.h"
#include "src/driver/object.h"
#include "src/driver/stats.h"
#include "src/host/host.h"
#include "src/support/command.h"
#include "src/support/message.h"
#include "src/support/number.h"

using namespace platform;

namespace {

constexpr std::string_view kDfsKey = "Dot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount";
constexpr std::string_view kClientKey = "Ap Client Status";
constexpr size_t kStatusValueSize = 32;
constexpr const char* kNoDfs = "ra0";  // the 2.4 GHz radio has no radar channels

// The channel of a frequency; -1 is no channel.
int32_t channel_of(int32_t mhz) {
    return mhz > 5000 ? (mhz - 5000) / 5 : (mhz - 2407) / 5;
}

void read_running_channel(const char* ifname, channel_spec& spec) {
    iwconfig_client_get_channel(ifname, &spec);
    uint16_t frequency[16] = {};  // the driver answers with one, and knows no limit
    uint32_t length = 0;
    if (wsc_get_oid(ifname, kOidFrequency, frequency, &length) != 0) return;
    const int32_t channel = channel_of(frequency[0]);
    if (channel != -1) spec.ext_channel = channel;
}

// 80 MHz is reported only for the modes that have it.
int32_t width_of_80(int32_t wireless_mode) {
    switch (wireless_mode) {
        case 4:
        case 5:
        case 6:
        case 9:
            return 40;
        case 1:
        case 2:
        case 3:
            return 20;
        default:
            return 80;
    }
}

void put_value(char* buffer, std::string_view value) {
    if (buffer != nullptr) copy_text({buffer, kStatusValueSize}, value);
}

}  // namespace

int wireless_api_get_current_channelspec(const char* ifname, channel_spec* spec) {
    if (ifname == nullptr || spec == nullptr) return 0;

    wireless_conf conf = {};
    read_wireless_conf(&conf, ifname);
    if (check_wireless_ifstatus(get_wl_mode_by_ifname(ifname)) != 0) {
        read_running_channel(ifname, *spec);
    } else {
        memcpy(spec, reinterpret_cast<const char*>(&conf) + offsetof(wireless_conf, channel),
               sizeof *spec);
    }
    spec->bandwidth_mhz = conf.bandwidth;
    if (spec->bandwidth_mhz == 80) {
        spec->ext_channel = spec->channel;
        spec->bandwidth_mhz = width_of_80(conf.wireless_mode);
    }
    return 0;
}

int wireless_get_dfs_info(const char* ifname, dfs_info* info) {
    if (ifname == nullptr || info == nullptr) return 0;
    const std::string_view name = ifname;
    if (name == kNoDfs) return 0;

    TextBuffer<128> path;
    path.put("/tmp/").put(name).put(".dfsinfo");
    const Command<128> command("/sbin/iwpriv %s stat > /tmp/%s.dfsinfo", name, name);
    File file = driver_answer(name, command, path);
    char line[kDriverLineSize];
    const auto values = find_stats(file, kDfsKey, line);
    if (file.failed()) print_error("fopen %s fail", text_of(command.text()).data());
    if (!values) return 0;
    read_dfs_values(*values, *info);
    return 1;
}

int mt762x_get_apcli_status(const char* ifname, char* first, char* second) {
    if (ifname == nullptr) return 0;
    const std::string_view name = ifname;
    TextBuffer<128> path;
    path.put("/tmp/").put(name).put(".stat");
    const Command<128> command("/sbin/iwpriv %s stat > /tmp/%s.stat", name, name);
    File file = driver_answer(name, command, path);
    char line[kDriverLineSize];
    const auto values = find_stats(file, kClientKey, line);
    if (file.failed()) print_error("popen %s fail", text_of(command.text()).data());
    if (!values) return 0;

    const size_t comma = values->find(',');
    const std::string_view head(values->data(), std::min(comma, values->size()));
    if (head.empty()) return 0;
    put_value(first, head);
    if (comma == std::string_view::npos || comma + 1 == values->size()) return 0;
    put_value(second, {values->data() + comma + 1, values->size() - comma - 1});
    return 1;
}

int wireless_api_get_mbridge_status(const char* ifname, ap_entry* entry) {
    if (ifname == nullptr || entry == nullptr) return 0;

    memset(entry, 0, sizeof *entry);
    iwconfig_client_get_essid(ifname, entry->ssid);
    if (entry->ssid[0] == '\0') return 0;
    iwconfig_client_get_channel(ifname, &entry->channel);
    iwconfig_client_get_ap_mac(ifname, entry->bssid);
    if (entry->bssid[0] == '\0') return 0;

    char state[kStatusValueSize] = {};
    char rssi[kStatusValueSize] = {};
    if (mt762x_get_apcli_status(ifname, state, rssi) != 0) {
        entry->rssi = leading_decimal(rssi);
        entry->signal = mt_rssi_to_pwr(entry->rssi);
    }
    return 1;
}

int wireless_api_get_ssid(const char* ifname, char* buffer) {
    if (ifname == nullptr || buffer == nullptr) return 0;
    return iwconfig_client_get_essid(ifname, buffer);
}

int rt61_get_wireless_link_speed(const char* ifname) {
    if (ifname == nullptr) return 0;
    char mac[64] = {};
    if (iwconfig_client_get_ap_mac(ifname, mac) == 0) return 0;
    char essid[256] = {};
    iwconfig_client_get_essid(ifname, essid);
    return essid[0] != '\0' ? iwconfig_client_get_link_speed(ifname) : 0;
}

int rt61_wireless_api_set_txpower(const char* ifname, int percent) {
    if (ifname == nullptr) return 0;
    run_shell(Command<256>("/sbin/iwpriv %s set TxPower=%d", ifname, std::min(percent, 100)));
    return 0;
}
