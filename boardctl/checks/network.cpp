// Checks of the bridge, the networks' interfaces and their profiles.
#include "board/model/interfaces.h"
#include "board/model/radio_driver.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "boardctl/checks/checks.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

using board::KeyFile;

constexpr const char* kBridge = "br0";

void check_interface(Faults& faults, const std::string& ifname, bool enabled, bool bridged) {
    const std::string bridge = board::bridge_of(ifname);
    const bool is_up = board::interface_is_up(ifname);
    if (!enabled) {
        faults.require(!is_up, ifname + " is up, though it is switched off");
        faults.require(bridge.empty(), ifname + " is in the bridge, though switched off");
        return;
    }
    faults.require(is_up, ifname + " is down");
    faults.require(!bridged || bridge == kBridge, ifname + " is not in the bridge");
    faults.require(bridged || bridge.empty(), ifname + " is in the bridge");
}

// SSID and hidden flag of a network as a profile has them.
struct Announced {
    std::string ssid;
    bool hidden;
};

Announced announced(const KeyFile& profile, uint32_t number) {
    const std::string ssid = profile.get("SSID" + std::to_string(number + 1)).value_or("");
    // One flag a network: "1" of a single one, "0;1;" of several.
    const std::string flags = profile.get("HideSSID").value_or("");
    const size_t place = 2 * static_cast<size_t>(number);
    return {ssid, place < flags.size() && flags[place] == '1'};
}

void check_announced(Faults& faults, const KeyFile& profile, const Network& network,
                     const wireless_conf& wanted, const std::string& where) {
    const Announced found = announced(profile, network.number);
    faults.require(found.ssid == field_text(wanted.ssid),
                   where + " has the SSID " + found.ssid + " for " + network.ifname);
    faults.require(found.hidden == (wanted.ssid_broadcast == 0),
                   where + " has the wrong hidden flag for " + network.ifname);
}

void check_radio(const Session& session, Faults& faults, const Radio& radio) {
    const auto networks = networks_of(session, radio);
    for (const Network& network : networks)
        check_interface(faults, network.ifname, network.record.enabled != 0, true);
    if (networks.empty()) return;
    const wireless_conf& first = networks[0].record;
    check_interface(faults, radio.client_ifname, first.apcli_enable != 0, first.apcli_wan == 0);
}

}  // namespace

void check_bridge(Session& session, Faults& faults) {
    const auto attribute = [](const char* name) {
        return board::interface_attribute(kBridge, name);
    };
    const std::string address = session.host.easymesh_get_almac();
    faults.require(board::is_bridge(kBridge) && board::interface_is_up(kBridge),
                   "the bridge br0 is not up");
    faults.require(attribute("address") == address,
                   "the bridge does not have the address " + address);
    faults.require(attribute("bridge/multicast_snooping") == "0",
                   "the bridge snoops on multicast traffic");
    faults.require(board::bridge_of("eth0") == kBridge, "eth0 is not in the bridge");
}

void check_networks(Session& session, Faults& faults) {
    for (const Radio& radio : radios_of(session)) check_radio(session, faults, radio);
}

void check_helper(Session& session, Faults& faults) {
    const bool is_offered =
        session.host.is_default_config() != 0 && !board::path_exists("/tmp/factory_default_mode");
    const auto radios = radios_of(session);
    if (!is_offered || radios.empty()) return;
    const size_t count = networks_of(session, radios[0]).size();
    if (count >= PLATFORM_BSS_MAX) return;

    char block[PLATFORM_SYSINFO_SIZE] = {};
    session.host.get_si("sw", block);
    const std::string wanted(block + SW_INFO_HELPER_SSID);
    check_interface(faults, radios[0].network_ifnames[count], true, true);
    const auto profile = KeyFile::load_or_empty(radios[0].profile_path);
    faults.require(announced(profile, static_cast<uint32_t>(count)).ssid == wanted,
                   "the helper network " + wanted + " is not in " + radios[0].profile_path);
}

void check_profiles(Session& session, Faults& faults) {
    const bool is_easymesh = session.host.easymesh_enabled() != 0;
    for (const Radio& radio : radios_of(session)) {
        const auto file = KeyFile::load_or_empty(radio.profile_path);
        const auto in_force =
            is_running(radio) ? board::driver_profile(radio.main_ifname) : std::optional<KeyFile>();
        for (const Network& network : networks_of(session, radio)) {
            wireless_conf wanted = network.record;
            if (is_easymesh) wanted.ssid_broadcast = 0;  // it hides every network
            check_announced(faults, file, network, wanted, radio.profile_path);
            if (!in_force) continue;
            check_announced(faults, *in_force, network, wanted,
                            "the driver of " + radio.main_ifname);
        }
    }
}

}  // namespace boardctl
