// The Ethernet switch as a whole: VLANs and address table.
#include <bit>

#include "board/host/entry.h"
#include "board/model/switch.h"
#include "boardctl/verbs/host_records.h"
#include "boardctl/verbs/port_names.h"
#include "boardctl/verbs/radio_names.h"
#include "platform/switch.h"
#include "src/host/host.h"

namespace boardctl {
namespace {

constexpr int kAllPorts = 0x7f;

void rebuild(Session& session, const Arguments& arguments) {
    const Library& library = session.library;
    if (!arguments.has("--iptv")) {
        session.perform("reinit_vlan()", PLATFORM_CALL(library, reinit_vlan));
        return;
    }
    const int iptv = is_on(arguments.text("--iptv")) ? 1 : 0;
    session.perform("set_iptv_system",
                    [&] { return PLATFORM_CALL(library, set_iptv_system)(iptv); });
    if (!session.is_virtual) return;
    const std::string line = "set iptv_config " + std::to_string(iptv);
    HOST_CALL(library, board_set_state)(line.c_str());
}

// The switch command tells nothing back; on the virtual board we know what it was told.
Json vlan_rows(const Session& session) {
    const board::Switch board_switch;
    Json rows = Json::array();
    for (const Port& port : ports_of(session))
        rows.push_back(
            {{"port", port.name},
             {"switch_port", port.switch_port},
             {"vlan", board_switch.setting("pvid." + std::to_string(port.switch_port))}});
    return rows;
}

Json member_rows() {
    const board::Switch board_switch;
    Json rows = Json::array();
    for (const char* const vlan : {"1", "2"}) {
        const std::string setting = board_switch.setting(std::string("vlan.") + vlan);
        const size_t blank = std::min(setting.find(' '), setting.size());
        rows.push_back(
            {{"vlan", vlan}, {"members", setting.substr(std::min(blank + 1, setting.size()))}});
    }
    return rows;
}

Outcome vlan(Session& session, const Arguments& arguments) {
    const bool is_change = arguments.has("--rebuild") || arguments.has("--iptv");
    if (is_change) rebuild(session, arguments);
    if (session.is_virtual) return {{{"ports", vlan_rows(session)}, {"vlans", member_rows()}}};
    if (!is_change) session.require_virtual("a look at the VLANs that the switch was told");
    return {{{"rebuilt", true}}};
}

Json ports_in(const Session& session, uint8_t port_map) {
    Json names = Json::array();
    for (const Port& port : ports_of(session))
        if ((port_map >> port.switch_port & 1) != 0) names.push_back(port.name);
    return names;
}

Outcome mac_table(Session& session, const Arguments& arguments) {
    const Library& library = session.library;
    std::vector<std::string> deleted;
    for (const std::string& mac : arguments.texts("--delete"))
        deleted.push_back(station_address(session, "--delete", mac));
    if (arguments.has("--clear"))
        session.perform("clearing the address table",
                        PLATFORM_CALL(library, ethswitch_clear_mactable));
    for (const std::string& mac : deleted)
        session.perform("deleting " + mac,
                        [&] { return PLATFORM_CALL(library, ethswitch_del_mac)(mac.c_str()); });
    std::vector<switch_mac_entry> entries(board::kAddressTable);
    const Step walk = session.perform("walking the address table", [&] {
        return PLATFORM_CALL(library, ethswitch_get_all_macentry)(
            entries.data(), static_cast<int>(entries.size()), kAllPorts);
    });
    if (walk.result < 0) throw Failed("the switch does not tell its addresses");
    entries.resize(static_cast<size_t>(walk.result));
    Json rows = Json::array();
    for (const switch_mac_entry& entry : entries) {
        const std::string mac = address_text(session, entry.mac);
        const bool has_link = PLATFORM_CALL(library, ethswitch_get_mac_port_link)(mac.c_str()) != 0;
        rows.push_back({{"station", mac},
                        {"ports", ports_in(session, entry.port_map)},
                        {"link", has_link},
                        {"info", entry.info}});
    }
    return {{{"addresses", rows}}};
}

constexpr Option kVlanOptions[] = {
    {"--rebuild", Kind::flag, "as the host has it stored"},
    {"--iptv", Kind::text, "on or off: with the IPTV port among the WAN's, or not", {}, kOnOff},
};
constexpr Option kMacTableOptions[] = {
    {"--delete", Kind::texts, "forget these addresses first"},
    {"--clear", Kind::flag, "forget all first"},
};

}  // namespace

std::span<const Verb> switch_verbs() {
    static const Verb kVerbs[] = {
        {"vlan", "", "Shows or rebuilds the LAN and WAN VLANs.",
         "  boardctl vlan\n  boardctl vlan --iptv on", vlan, kVlanOptions},
        {"mac-table", "", "The addresses that the switch has learnt.",
         "  boardctl mac-table\n  boardctl mac-table --delete 02:00:5E:10:00:01", mac_table,
         kMacTableOptions},
    };
    return kVerbs;
}

}  // namespace boardctl
