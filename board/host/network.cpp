// Addresses, feature switches, interfaces and services.
#include <algorithm>

#include "board/host/radio.h"
#include "board/model/interfaces.h"
#include "board/model/radio_driver.h"
#include "board/store/journal.h"
#include "src/host/host.h"

using board::state;

namespace {

void put_address(char* output, const std::string& address) {
    constexpr size_t kAddressSize = 16;
    if (output != nullptr) sf_strncpy(output, address.c_str(), kAddressSize);
}

bool is_running(int wl_mode) {
    const auto names = board::interface_names();
    return std::any_of(names.begin(), names.end(), [wl_mode](const std::string& name) {
        return board::wl_mode_of(name) == wl_mode && board::interface_is_up(name);
    });
}

}  // namespace

extern "C" {

const char* get_my_mac() {
    return state().my_mac.c_str();
}

int get_lan_ipconfig(char* address, char* netmask, char* gateway) {
    put_address(address, state().lan_address);
    put_address(netmask, state().lan_netmask);
    put_address(gateway, state().lan_gateway);
    return 0;
}

int get_igmp_proxy() {
    return state().igmp_proxy;
}

int easymesh_enabled() {
    return state().easymesh;
}

const char* easymesh_get_almac() {
    return state().almac.c_str();
}

int easymesh_get_kdx_ie(vendor_element* element) {
    *element = state().element;
    return 0;
}

int easymesh_make_wsc_kdx_type_str(char* text, int size) {
    sf_strncpy(text, state().wsc_device_name.c_str(), static_cast<size_t>(size));
    return 0;
}

int get_ifexist(const char* ifname) {
    return board::interface_exists(ifname);
}

int get_ifstatus(const char* ifname) {
    return board::interface_is_up(ifname);
}

int ifup(const char* ifname) {
    board::journal({"ifup", ifname});
    const int wl_mode = board::wl_mode_of(ifname);
    const bool starts_radio = wl_mode != board::kUnknownRadio && !is_running(wl_mode);
    if (!board::set_interface_up(ifname, true)) return -1;
    if (starts_radio) board::load_driver_profile(board::find_radio(wl_mode)->main_ifname);
    return 0;
}

int ifdown(const char* ifname) {
    board::journal({"ifdown", ifname});
    return board::set_interface_up(ifname, false) ? 0 : -1;
}

int set_ifconfig(const char* ifname, const char* address, const char* netmask) {
    board::journal({"set_ifconfig", ifname, address, netmask});
    const std::string value = std::string(address) + ' ' + netmask;
    return board::set_interface_attribute(ifname, "ipv4", value) ? 0 : -1;
}

int is_default_config() {
    return state().default_config;
}

int stop_wan(const char* name) {
    board::journal({"stop_wan", name});
    return 0;
}

int get_wan_type(const char* name, char* type) {
    constexpr size_t kTypeSize = 32;
    const auto row = state().wan_types.find(name);
    if (row == state().wan_types.end()) return -1;
    sf_strncpy(type, row->second.c_str(), kTypeSize);
    return 0;
}

int apply_network_configuration() {
    board::journal({"apply_network_configuration"});
    return 0;
}

int signal_start(const char* service) {
    board::journal({"signal_start", service});
    return 0;
}

int signal_wan() {
    board::journal({"signal_wan"});
    return 0;
}

}  // extern "C"
