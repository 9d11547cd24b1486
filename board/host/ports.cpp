// Ethernet ports and host lists.
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "board/host/state.h"
#include "src/host/host.h"

using board::state;

namespace {

constexpr int kWanPort = 0x10000;  // WAN port j is kWanPort + j

// Switch port of port 1, 2, ... of a list, -1 beyond it.
int switch_port(const std::vector<int>& ports, int number) {
    return number >= 1 && number <= std::ssize(ports) ? ports[static_cast<size_t>(number) - 1] : -1;
}

// The reverse: 1, 2, ... or 0.
int port_number(const std::vector<int>& ports, int port) {
    const auto found = std::find(ports.begin(), ports.end(), port);
    return found == ports.end() ? 0 : static_cast<int>(found - ports.begin()) + 1;
}

struct ListNode {
    ListNode* next;
};

struct ListHead {
    uint32_t count;
    ListNode* first;
    ListNode* last;
};

}  // namespace

extern "C" {

int get_iptv_config() {
    return state().iptv_config;
}

int get_sniff_port() {
    return state().sniff_port;
}

int read_portconfig(int user_port, void* setting) {
    constexpr size_t kFieldSize = 10;
    const auto row = state().port_settings.find(user_port);
    if (row == state().port_settings.end()) return 0;
    char* field = static_cast<char*>(setting);
    for (const std::string* text : {&row->second.mode, &row->second.speed, &row->second.duplex}) {
        sf_strncpy(field, text->c_str(), kFieldSize);
        field += kFieldSize;
    }
    return 1;
}

int get_dev_port(const hw_info*, int user_port) {
    return user_port >= kWanPort ? switch_port(state().wan_switch_ports, user_port - kWanPort)
                                 : switch_port(state().lan_switch_ports, user_port);
}

int get_ux_port(const hw_info*, int port) {
    if (const int lan = port_number(state().lan_switch_ports, port); lan != 0) return lan;
    const int wan = port_number(state().wan_switch_ports, port);
    return wan == 0 ? -1 : kWanPort + wan;
}

void* alloc_add_list(void* head, int size) {
    auto* const list = static_cast<ListHead*>(head);
    auto* const node = static_cast<ListNode*>(std::calloc(1, static_cast<size_t>(size)));
    if (node == nullptr) return nullptr;
    if (list->count == 0) ++state().open_lists;
    (list->first == nullptr ? list->first : list->last->next) = node;
    list->last = node;
    ++list->count;
    return node;
}

int free_all_list(void* head, void*) {
    auto* const list = static_cast<ListHead*>(head);
    if (list->count != 0) --state().open_lists;
    for (ListNode* node = list->first; node != nullptr;) {
        ListNode* const next = node->next;
        std::free(node);
        node = next;
    }
    *list = {};
    return 0;
}

}  // extern "C"
