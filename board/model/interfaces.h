// Network interfaces and bridges, laid out as the kernel shows them under /sys/class/net. Nothing
// here touches the network of the machine that the board runs on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace board {

void create_interface(std::string_view name);  // down
bool interface_exists(std::string_view name);
bool interface_is_up(std::string_view name);
bool set_interface_up(std::string_view name, bool up);  // false: no such interface
std::vector<std::string> interface_names();

bool is_bridge(std::string_view name);
bool create_bridge(std::string_view name);       // false: the name is taken
std::string bridge_of(std::string_view member);  // empty: in none
std::vector<std::string> bridge_members(std::string_view bridge);
bool add_bridge_member(std::string_view bridge, std::string_view member);     // false: not possible
bool remove_bridge_member(std::string_view bridge, std::string_view member);  // false: not one

// One attribute of an interface, such as "address" or "bridge/stp_state".
std::string interface_attribute(std::string_view name, std::string_view attribute);
bool set_interface_attribute(std::string_view name, std::string_view attribute,
                             std::string_view value);

}  // namespace board
