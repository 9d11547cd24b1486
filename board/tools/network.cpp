// brctl and ifconfig.
#include "board/model/interfaces.h"
#include "board/tools/tools.h"

namespace board::tools {
namespace {

int no_bridge(const std::string& name) {
    return fail(1, "bridge " + name + " does not exist!");
}

int addbr(const std::string& bridge) {
    if (create_bridge(bridge)) return 0;
    return fail(1, "device " + bridge + " already exists; can't create bridge with the same name");
}

int addif(const std::string& bridge, const std::string& member) {
    if (!is_bridge(bridge)) return no_bridge(bridge);
    if (!interface_exists(member)) return fail(1, "interface " + member + " does not exist!");
    if (add_bridge_member(bridge, member)) return 0;
    return fail(1, "device " + member +
                       " is already a member of a bridge; can't add it to bridge " + bridge + ".");
}

int delif(const std::string& bridge, const std::string& member) {
    if (!is_bridge(bridge)) return no_bridge(bridge);
    if (!interface_exists(member)) return fail(1, "interface " + member + " does not exist!");
    if (remove_bridge_member(bridge, member)) return 0;
    return fail(1, "device " + member + " is not a slave of " + bridge);
}

int set_attribute(const std::string& bridge, const char* attribute, const std::string& value) {
    if (!is_bridge(bridge)) return no_bridge(bridge);
    return set_interface_attribute(bridge, attribute, value) ? 0 : 1;
}

}  // namespace

int brctl(Words words) {
    const std::string verb = words.empty() ? "" : words[0];
    if (words.size() == 2 && verb == "addbr") return addbr(words[1]);
    if (words.size() == 3) {
        if (verb == "addif") return addif(words[1], words[2]);
        if (verb == "delif") return delif(words[1], words[2]);
        if (verb == "setfd") return set_attribute(words[1], "bridge/forward_delay", words[2]);
        if (verb == "stp")
            return set_attribute(words[1], "bridge/stp_state", words[2] == "on" ? "1" : "0");
    }
    return fail(1, "Usage: brctl addbr|addif|delif|setfd|stp <bridge> ...");
}

int ifconfig(Words words) {
    if (words.size() != 4 || words[1] != "hw" || words[2] != "ether")
        return fail(1, "Usage: ifconfig <interface> hw ether <address>");
    if (set_interface_attribute(words[0], "address", words[3])) return 0;
    return fail(1, "SIOCSIFHWADDR: No such device");
}

}  // namespace board::tools
