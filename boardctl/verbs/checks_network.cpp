// Checks of the bridge, the networks' interfaces and their profiles.
#include "board/model/interfaces.h"
#include "board/model/radio_driver.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "boardctl/verbs/checks.h"
#include "boardctl/verbs/radio_names.h"
#include "src/host/host.h"

namespace boardctl {
namespace {

using board::KeyFile;

constexpr const char* kBridge = "br0";

void check_running(Faults& faults, const std::string& ifname, bool bridged) {
    require(faults, board::interface_is_up(ifname), ifname + " is down");
    if (bridged)
        require(faults, board::bridge_of(ifname) == kBridge, ifname + " is not in the bridge");
    else
        require(faults, board::bridge_of(ifname).empty(), ifname + " is in the bridge");
}

void check_off(Faults& faults, const std::string& ifname) {
    require(faults, !board::interface_is_up(ifname), ifname + " is up, though it is switched off");
    require(faults, board::bridge_of(ifname).empty(),
            ifname + " is in the bridge, though switched off");
}

// SSID and hidden flag of a network as a profile has them.
struct Announced {
    std::string ssid;
    bool hidden;
};

Announced announced(const KeyFile& profile, int number) {
    const std::string ssid = profile.get("SSID" + std::to_string(number + 1)).value_or("");
    // One flag a network: "1" of a single one, "0;1;" of several.
    const std::string flags = profile.get("HideSSID").value_or("");
    const size_t place = 2 * static_cast<size_t>(number);
    return {ssid, place < flags.size() && flags[place] == '1'};
}

void check_announced(Faults& faults, const KeyFile& profile, const Network& network,
                     const wireless_conf& wanted, const std::string& where) {
    const Announced found = announced(profile, network.number);
    require(faults, found.ssid == field_text(wanted.ssid),
            where + " has the SSID " + found.ssid + " for " + network.ifname);
    require(faults, found.hidden == (wanted.ssid_broadcast == 0),
            where + " has the wrong hidden flag for " + network.ifname);
}

void check_radio(const Session& session, Faults& faults, const Radio& radio) {
    const auto records = records_of(session, radio);
    if (records.empty()) return;
    for (const Network& network : networks_of(session, radio))
        if (records[static_cast<size_t>(network.number)].enabled != 0)
            check_running(faults, network.ifname, true);
        else
            check_off(faults, network.ifname);
    if (records[0].apcli_enable != 0)
        check_running(faults, radio.client_ifname, records[0].apcli_wan == 0);
    else
        check_off(faults, radio.client_ifname);
}

}  // namespace

Faults check_bridge(Session& session) {
    Faults faults;
    const auto attribute = [](const char* name) {
        return board::interface_attribute(kBridge, name);
    };
    const std::string address = HOST_CALL(session.library, easymesh_get_almac)();
    require(faults, board::is_bridge(kBridge) && board::interface_is_up(kBridge),
            "the bridge br0 is not up");
    require(faults, attribute("address") == address,
            "the bridge does not have the address " + address);
    require(faults, attribute("bridge/multicast_snooping") == "0",
            "the bridge snoops on multicast traffic");
    require(faults, board::bridge_of("eth0") == kBridge, "eth0 is not in the bridge");
    return faults;
}

Faults check_networks(Session& session) {
    Faults faults;
    for (const Radio& radio : radios_of(session)) check_radio(session, faults, radio);
    return faults;
}

Faults check_helper(Session& session) {
    Faults faults;
    const bool is_offered = HOST_CALL(session.library, is_default_config)() != 0 &&
                            !board::path_exists("/tmp/factory_default_mode");
    const auto radios = radios_of(session);
    if (!is_offered || radios.empty()) return faults;
    const auto count = static_cast<uint32_t>(records_of(session, radios[0]).size());
    if (count >= PLATFORM_BSS_MAX) return faults;

    char block[PLATFORM_SYSINFO_SIZE] = {};
    HOST_CALL(session.library, get_si)("sw", block);
    const std::string wanted(block + SW_INFO_HELPER_SSID);
    check_running(faults, network_ifname(session, count), true);
    const auto profile = KeyFile::load_or_empty(radios[0].profile_path);
    require(faults, announced(profile, static_cast<int>(count)).ssid == wanted,
            "the helper network " + wanted + " is not in " + radios[0].profile_path);
    return faults;
}

Faults check_profiles(Session& session) {
    Faults faults;
    const bool is_easymesh = HOST_CALL(session.library, easymesh_enabled)() != 0;
    for (const Radio& radio : radios_of(session)) {
        const auto records = records_of(session, radio);
        const auto file = KeyFile::load_or_empty(radio.profile_path);
        const auto in_force = is_running(session, radio) ? board::driver_profile(radio.main_ifname)
                                                         : std::optional<KeyFile>();
        for (const Network& network : networks_of(session, radio)) {
            wireless_conf wanted = records[static_cast<size_t>(network.number)];
            if (is_easymesh) wanted.ssid_broadcast = 0;  // it hides every network
            check_announced(faults, file, network, wanted, radio.profile_path);
            if (!in_force) continue;
            check_announced(faults, *in_force, network, wanted,
                            "the driver of " + radio.main_ifname);
        }
    }
    return faults;
}

}  // namespace boardctl
