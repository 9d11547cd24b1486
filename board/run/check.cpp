#include "run/check.h"

#include <algorithm>
#include <cstring>

#include "host/radio.h"
#include "live/interfaces.h"
#include "live/radio_driver.h"
#include "live/tree.h"

namespace board::run {
namespace {

using Faults = std::vector<std::string>;

constexpr const char* kBridge = "br0";

void require(Faults& faults, bool good, const std::string& fault) {
    if (!good) faults.push_back(fault);
}

bool is_set(int32_t flag) {
    return flag != 0;
}

std::string text_of(const char* field, size_t width) {
    return {field, strnlen(field, width)};
}

void check_running(Faults& faults, const std::string& ifname, bool bridged) {
    require(faults, interface_is_up(ifname), ifname + " is down");
    if (bridged)
        require(faults, bridge_of(ifname) == kBridge, ifname + " is not in the bridge");
    else
        require(faults, bridge_of(ifname).empty(), ifname + " is in the bridge");
}

void check_off(Faults& faults, const std::string& ifname) {
    require(faults, !interface_is_up(ifname), ifname + " is up, though it is switched off");
    require(faults, bridge_of(ifname).empty(), ifname + " is in the bridge, though switched off");
}

bool offers_helper(int wl_mode) {
    return wl_mode == 0 && state().default_config != 0 && !path_exists("/tmp/factory_default_mode");
}

void check_helper(Faults& faults, int wl_mode, int number) {
    const BssPlace helper = place_of(wl_mode, number);
    check_running(faults, helper.ifname, true);
    const auto profile = KeyFile::load_or_empty(profile_path(wl_mode));
    const std::string wanted = text_of(state().sw.data() + SW_INFO_HELPER_SSID,
                                       SW_INFO_HELPER_SECURED - SW_INFO_HELPER_SSID);
    require(faults, announced(profile, number).ssid == wanted,
            "the helper network " + wanted + " is not in " + profile_path(wl_mode));
}

void check_radio(Faults& faults, int wl_mode, bool helper) {
    const Radio* const radio = find_radio(wl_mode);
    if (radio == nullptr) return;
    for (int number = 0; number < radio->bss_count; ++number) {
        const std::string ifname = place_of(wl_mode, number).ifname;
        if (is_set(radio->bss[static_cast<size_t>(number)].enabled))
            check_running(faults, ifname, true);
        else
            check_off(faults, ifname);
    }
    if (helper && offers_helper(wl_mode) && radio->bss_count < PLATFORM_BSS_MAX)
        check_helper(faults, wl_mode, radio->bss_count);

    const wireless_conf& settings = radio->bss[0];
    const std::string client = radio->client_prefix + '0';
    if (is_set(settings.apcli_enable))
        check_running(faults, client, !is_set(settings.apcli_wan));
    else
        check_off(faults, client);
}

void check_announced(Faults& faults, const KeyFile& profile, const BssPlace& bss,
                     const std::string& where) {
    const wireless_conf& wanted = find_radio(bss.wl_mode)->bss[static_cast<size_t>(bss.number)];
    const Announced found = announced(profile, bss.number);
    require(faults, found.ssid == text_of(wanted.ssid, sizeof wanted.ssid),
            where + " has the SSID " + found.ssid + " for " + bss.ifname);
    require(faults, found.hidden != is_set(wanted.ssid_broadcast),
            where + " has the wrong hidden flag for " + bss.ifname);
}

}  // namespace

BssPlace place_of(int wl_mode, int number) {
    return {wl_mode, number, find_radio(wl_mode)->bss_prefix + std::to_string(number)};
}

std::string profile_path(int wl_mode) {
    return radio_index_value(find_radio(wl_mode)->main_ifname, "profile_path").value_or("");
}

Announced announced(const KeyFile& profile, int number) {
    const std::string ssid = profile.get("SSID" + std::to_string(number + 1)).value_or("");
    // One flag a BSS: "1" of a single one, "0;1;" of several.
    const std::string flags = profile.get("HideSSID").value_or("");
    const size_t place = 2 * static_cast<size_t>(number);
    return {ssid, place < flags.size() && flags[place] == '1'};
}

std::vector<std::string> faults_of_board(bool helper) {
    Faults faults;
    require(faults, is_bridge(kBridge) && interface_is_up(kBridge), "the bridge br0 is not up");
    require(faults, interface_attribute(kBridge, "address") == state().almac,
            "the bridge does not have the address " + state().almac);
    require(faults, interface_attribute(kBridge, "bridge/multicast_snooping") == "0",
            "the bridge snoops on multicast traffic");
    require(faults, bridge_of("eth0") == kBridge, "eth0 is not in the bridge");
    for (const int32_t wl_mode : state().wl_modes) check_radio(faults, wl_mode, helper);
    return faults;
}

std::vector<std::string> faults_of_change(const BssPlace& bss) {
    Faults faults;
    const std::string path = profile_path(bss.wl_mode);
    check_announced(faults, KeyFile::load_or_empty(path), bss, path);
    const std::string& main_ifname = find_radio(bss.wl_mode)->main_ifname;
    check_announced(faults, driver_profile(main_ifname).value_or(KeyFile{}), bss,
                    "the driver of " + main_ifname);
    return faults;
}

}  // namespace board::run
