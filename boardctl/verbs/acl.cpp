// Who may join a network: the host's list and what the drivers were told.
#include <algorithm>
#include <iterator>

#include "board/model/radio_driver.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

using Addresses = std::vector<std::string>;

constexpr const char* kPolicies[] = {"off", "deny", "allow"};  // the host's numbers

std::string policy_word(int policy) {
    return policy >= 0 && policy < 3 ? kPolicies[policy] : std::to_string(policy);
}

int policy_of(const std::string& word) {
    const auto* const place = std::find(std::begin(kPolicies), std::end(kPolicies), word);
    return static_cast<int>(place - std::begin(kPolicies));
}

Json row_of(const Session& session, const Network& network) {
    const AccessFilter filter = access_filter_of(session, network.wl_index());
    Json row = {{"network", network.ifname},
                {"policy", policy_word(filter.policy)},
                {"addresses", filter.addresses}};
    if (!session.is_virtual) return row;
    const auto in_force = board::access_control(network.ifname);
    row["driver"] = policy_word(other_policy(in_force.policy));
    row["driver_addresses"] = in_force.addresses;
    return row;
}

// The host's own list can be written on the virtual board alone; a real host has its ways.
void change_list(const Session& session, const Network& network, const Arguments& arguments,
                 int policy) {
    Addresses list = access_filter_of(session, network.wl_index()).addresses;
    if (arguments.has("--clear")) list.clear();
    for (const std::string& mac : arguments.texts("--remove"))
        std::erase(list, station_address(session, "--remove", mac));
    for (const std::string& mac : arguments.texts("--add")) {
        std::erase(list, station_address(session, "--add", mac));
        list.push_back(station_address(session, "--add", mac));
    }
    const int limit = session.host.hwinfo_get_max_macauth();
    if (std::ssize(list) > limit)
        throw UsageError("a list holds " + std::to_string(limit) + " addresses, not " +
                         std::to_string(list.size()));
    std::string line;
    for (const std::string& mac : list) line += mac + ' ';
    if (session.host.board_set_mac_filter(network.wl_index(), policy, line.c_str()) != 0)
        throw Failed("the host does not take the list");
}

void change(Session& session, const Network& network, const Arguments& arguments) {
    const uint32_t wl_index = network.wl_index();
    const bool has_list = arguments.has_any({"--add", "--remove", "--clear"});
    const int policy = arguments.has("--policy") ? policy_of(arguments.text("--policy"))
                                                 : session.host.macauth_get_policy(wl_index);
    if (has_list) session.require_virtual("its host's address list for change");
    if (session.is_virtual) change_list(session, network, arguments, policy);
    session.perform(session.platform.wireless_apply_macauth, wl_index);
    session.perform(session.platform.wireless_macauth_set_policy, wl_index, policy);
}

Outcome acl(Session& session, const Arguments& arguments) {
    const bool changes = arguments.has_any({"--policy", "--add", "--remove", "--clear", "--apply"});
    Json rows = Json::array();
    if (arguments.has("NETWORK")) {
        const Network network = named_network(session, arguments.text("NETWORK"));
        if (changes) change(session, network, arguments);
        rows.push_back(row_of(session, network));
    } else {
        if (changes) throw UsageError("name the network to change");
        for (const Radio& radio : radios_of(session))
            for (const Network& network : networks_of(session, radio))
                rows.push_back(row_of(session, network));
    }
    return {{{"access", rows}}};
}

}  // namespace

Verbs acl_verbs() {
    return {
        Verb("acl", "Shows or changes who may join a network.",
             "acl\nacl ra0 --policy deny --add 3C:5A:B4:01:02:03\nacl ra0 --policy off", acl,
             {{"NETWORK", Kind::positional, "such as ra0 or rai1; all when not given"},
              {"--policy", Kind::text, "off, deny (the listed) or allow (only the listed)",
               "off|deny|allow"},
              {"--add", Kind::text, "address of a station; lasts on the virtual board"},
              {"--remove", Kind::text, "address of a station"},
              {"--clear", Kind::flag, "empty the list first"},
              {"--apply", Kind::flag, "tell the driver again"}}),
    };
}

}  // namespace boardctl
