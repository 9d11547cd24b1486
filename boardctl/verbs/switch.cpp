// The Ethernet switch as a whole: VLANs and address table.
#include "board/model/switch.h"
#include "boardctl/facts/ports.h"
#include "boardctl/verb.h"

namespace boardctl {
namespace {

constexpr int kAllPorts = 0x7f;

void rebuild(Session& session, const Arguments& arguments) {
    if (!arguments.has("--iptv")) {
        session.perform(session.platform.reinit_vlan);
        return;
    }
    const int iptv = is_on(arguments.text("--iptv")) ? 1 : 0;
    session.perform(session.platform.set_iptv_system, iptv);
    session.store("set iptv_config " + std::to_string(iptv));
}

// The switch command tells nothing back; on the virtual board we know what it was told.
Json vlan_rows(const Session& session) {
    const board::Switch board_switch;
    Json rows = Json::array();
    for (const Port& port : ports_of(session))
        rows.push_back({{"port", port.name},
                        {"switch_port", port.switch_port},
                        {"vlan", board_switch.setting("pvid." + port.number())}});
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
    std::vector<std::string> deleted;
    for (const std::string& mac : arguments.texts("--delete"))
        deleted.push_back(station_address(session, "--delete", mac));
    if (arguments.has("--clear"))
        session.perform("clearing the address table", session.platform.ethswitch_clear_mactable);
    for (const std::string& mac : deleted)
        session.perform("deleting " + mac, session.platform.ethswitch_del_mac, mac.c_str());
    std::vector<switch_mac_entry> entries(board::kAddressTable);
    const Step walk =
        session.perform("walking the address table", session.platform.ethswitch_get_all_macentry,
                        entries.data(), static_cast<int>(entries.size()), kAllPorts);
    if (walk.result < 0) throw Failed("the switch does not tell its addresses");
    entries.resize(static_cast<size_t>(walk.result));
    Json rows = Json::array();
    for (const switch_mac_entry& entry : entries) {
        const std::string mac = address_text(session, entry.mac);
        const bool has_link = session.platform.ethswitch_get_mac_port_link(mac.c_str()) != 0;
        rows.push_back({{"station", mac},
                        {"ports", ports_in(session, entry.port_map)},
                        {"link", has_link},
                        {"info", entry.info}});
    }
    return {{{"addresses", rows}}};
}

}  // namespace

Verbs switch_verbs() {
    return {
        Verb("vlan", "Shows or rebuilds the LAN and WAN VLANs.", "vlan\nvlan --iptv on", vlan,
             {{"--rebuild", Kind::flag, "as the host has it stored"},
              {"--iptv", Kind::text, "on or off: with the IPTV port among the WAN's, or not",
               kOnOff}}),
        Verb("mac-table", "The addresses that the switch has learnt.",
             "mac-table\nmac-table --delete 02:00:5E:10:00:01", mac_table,
             {{"--delete", Kind::texts, "forget these addresses first"},
              {"--clear", Kind::flag, "forget all first"}}),
    };
}

}  // namespace boardctl
