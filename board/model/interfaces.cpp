#include "board/model/interfaces.h"

#include <net/if.h>

#include "board/store/store.h"

namespace board {
namespace {

constexpr std::string_view kNet = "/sys/class/net/";
constexpr std::string_view kVirtualNet = "/sys/devices/virtual/net/";

bool is_interface_name(std::string_view name) {
    return !name.empty() && name.size() < IFNAMSIZ && name != "." && name != ".." &&
           name.find('/') == std::string_view::npos;
}

std::string place(std::string_view name, std::string_view attribute = "") {
    std::string path = std::string(kNet) + std::string(name);
    if (!attribute.empty()) path += '/' + std::string(attribute);
    return path;
}

std::string member_mark(std::string_view bridge, std::string_view member) {
    return place(bridge, "brif/" + std::string(member));
}

}  // namespace

void create_interface(std::string_view name) {
    if (!is_interface_name(name) || interface_exists(name)) return;
    make_directories(place(name));
    set_interface_up(name, false);
}

bool interface_exists(std::string_view name) {
    return is_interface_name(name) && path_exists(place(name));
}

bool interface_is_up(std::string_view name) {
    return interface_attribute(name, "operstate") == "up";
}

bool set_interface_up(std::string_view name, bool up) {
    return set_interface_attribute(name, "operstate", up ? "up" : "down");
}

std::vector<std::string> interface_names() {
    return store().entries(kNet);
}

bool is_bridge(std::string_view name) {
    return interface_exists(name) && path_exists(place(name, "bridge"));
}

bool create_bridge(std::string_view name) {
    if (!is_interface_name(name) || interface_exists(name)) return false;
    const std::string device = std::string(kVirtualNet) + std::string(name);
    make_directories(device + "/bridge");
    make_directories(device + "/brif");
    make_directories(kNet);
    return store().link(place(name), device) && set_interface_up(name, false) &&
           set_interface_attribute(name, "bridge/multicast_snooping", "1");
}

std::string bridge_of(std::string_view member) {
    for (const std::string& name : interface_names())
        if (is_bridge(name) && path_exists(member_mark(name, member))) return name;
    return {};
}

std::vector<std::string> bridge_members(std::string_view bridge) {
    return store().entries(place(bridge, "brif"));
}

bool add_bridge_member(std::string_view bridge, std::string_view member) {
    const bool possible = is_bridge(bridge) && interface_exists(member) && !is_bridge(member) &&
                          bridge_of(member).empty();
    return possible && write_text(member_mark(bridge, member), "");
}

bool remove_bridge_member(std::string_view bridge, std::string_view member) {
    return is_bridge(bridge) && is_interface_name(member) &&
           store().remove(member_mark(bridge, member));
}

std::string interface_attribute(std::string_view name, std::string_view attribute) {
    std::string value = read_text(place(name, attribute)).value_or("");
    while (value.ends_with('\n')) value.pop_back();
    return value;
}

bool set_interface_attribute(std::string_view name, std::string_view attribute,
                             std::string_view value) {
    return interface_exists(name) && write_text(place(name, attribute), std::string(value) + '\n');
}

}  // namespace board
