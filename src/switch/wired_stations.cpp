#include <string.h>

#include <span>

#include "platform/switch.h"
#include "src/support/heap.h"
#include "src/support/message.h"
#include "src/support/text.h"
#include "src/switch/ports.h"

using namespace platform;

namespace {

constexpr int kTableSize = 2048;
constexpr int kUserPorts = 0x1F;  // switch ports 0 to 4; the others lead inside

int lan_port_mask(const hw_info& hw) {
    const int wan = switch_port_of(hw, kFirstWanPort);
    return wan != kNoPort ? kUserPorts & ~(1 << wan) : kUserPorts;
}

// The user port of the lowest LAN port on which the address was learnt, kNoPort when there is none.
int user_port_of(const hw_info& hw, const switch_mac_entry& entry) {
    for (int port = 0; port < hw.lan_port_count && port < kSwitchPorts; ++port)
        if ((entry.port_map >> port & 1) != 0) return get_ux_port(&hw, port);
    return kNoPort;
}

bool append_station(wired_station_list* list, const switch_mac_entry& entry, int user_port) {
    void* const node = alloc_add_list(list, sizeof(wired_station));
    if (node == nullptr) return false;
    wired_station* const station = static_cast<wired_station*>(node);
    station->kind = 1;
    memcpy(station->mac, entry.mac, sizeof station->mac);
    station->user_port = static_cast<uint32_t>(user_port);
    return true;
}

}  // namespace

int apcp_get_stalist_from_ethswitch(wired_station_list* list) {
    if (list == nullptr) return 0;

    const hw_info hw = hardware();
    const Heap<switch_mac_entry> entries(kTableSize);
    if (!entries.ok()) {
        print_error("ethswitch_get_all_apcp_sta; can't malloc\n");
        return 0;
    }
    const int count = ethswitch_get_all_macentry(entries.get(), kTableSize, lan_port_mask(hw));
    for (const switch_mac_entry& entry : std::span(entries.get(), static_cast<size_t>(count))) {
        if ((entry.mac[0] & 1) != 0) continue;
        const int user_port = user_port_of(hw, entry);
        if (user_port != kNoPort && !append_station(list, entry, user_port)) return 0;
    }
    return static_cast<int>(list->count);
}

int ethswitch_get_port_num(const char* mac) {
    if (mac == nullptr) return kNoPort;

    wired_station_list list = {};
    apcp_get_stalist_from_ethswitch(&list);
    int user_port = kNoPort;
    for (const wired_station* station = list.first; station != nullptr; station = station->next) {
        char text[32] = {};
        mactostr(station->mac, text, sizeof text);
        if (maccmp(text, mac) != 0) continue;
        user_port = static_cast<int>(station->user_port);
        break;
    }
    free_all_list(&list, nullptr);
    return user_port;
}

int ethswitch_search_mac_table(const char* mac) {
    return ethswitch_get_port_num(mac) != kNoPort;
}

int ethswitch_get_mac_port_link(const char* mac) {
    const int user_port = ethswitch_get_port_num(mac);
    if (user_port == kNoPort) return 0;
    port_setting state = {"Off", "", ""};
    get_link_status(user_port, &state);
    return field_text(state.mode) != "Off";
}
