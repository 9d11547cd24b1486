// switch: registers, PHYs, VLANs, mirror and address table of the Ethernet switch.
#include "board/model/switch.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <optional>

#include "board/tools/tools.h"

namespace board::tools {
namespace {

std::optional<int> number(const std::string& text, int base = 10) {
    unsigned value = 0;
    const bool negative = base == 10 && text.starts_with('-');
    const char* const start = text.data() + (negative ? 1 : 0);
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(start, end, value, base);
    if (error != std::errc() || stop != end) return std::nullopt;
    return negative ? -static_cast<int>(value) : static_cast<int>(value);
}

std::optional<int> port_number(const std::string& text, int ports = kSwitchPorts) {
    const auto port = number(text);
    return port && *port >= 0 && *port < ports ? port : std::nullopt;
}

int bad_argument() {
    return fail(1, "switch: bad argument");
}

// r PORT REGISTER, w PORT REGISTER VALUE
int phy(Switch& board_switch, Words words) {
    const auto port = port_number(words[1]);
    const auto reg = number(words[2]);
    if (!port || !reg || *reg < 0 || *reg > 31) return bad_argument();
    if (words[0] == "r" && words.size() == 3) {
        std::printf("Read port=%d reg=%d, value=0x%04x\n", *port, *reg,
                    static_cast<unsigned>(board_switch.read_phy(*port, *reg)));
        return 0;
    }
    const auto value = words[0] == "w" && words.size() == 4 ? number(words[3]) : std::nullopt;
    if (!value || *value < 0 || *value > 0xFFFF) return bad_argument();
    board_switch.write_phy(*port, *reg, static_cast<uint16_t>(*value));
    return 0;
}

// r ADDRESS, w ADDRESS VALUE, hexadecimal
int reg(Switch& board_switch, Words words) {
    const auto address = number(words[1], 16);
    if (!address || *address < 0 || *address > 0xFFFC || *address % 4 != 0) return bad_argument();
    const auto offset = static_cast<uint32_t>(*address);
    if (words[0] == "r" && words.size() == 2) {
        std::printf("Read reg=%x, value=0x%08x\n", offset, board_switch.read_register(offset));
        return 0;
    }
    const auto value = words[0] == "w" && words.size() == 3 ? number(words[2], 16) : std::nullopt;
    if (!value) return bad_argument();
    board_switch.write_register(offset, static_cast<uint32_t>(*value));
    return 0;
}

// pvid PORT VLAN, set VLAN INDEX MEMBERS
int vlan(Switch& board_switch, Words words) {
    if (words[0] == "pvid" && words.size() == 3) {
        const auto port = port_number(words[1]);
        if (!port || !number(words[2])) return bad_argument();
        board_switch.set("pvid." + words[1], words[2]);
        return 0;
    }
    if (words[0] != "set" || words.size() != 4 || words[3].size() != 8) return bad_argument();
    if (!number(words[1]) || !number(words[2])) return bad_argument();
    if (words[3].find_first_not_of("01") != std::string::npos) return bad_argument();
    board_switch.set("vlan." + words[1], words[2] + ' ' + words[3]);
    return 0;
}

// enable ON PORT, target PORT DIRECTIONS; a mirror that is off has no port and no targets
int mirror(Switch& board_switch, Words words) {
    if (words.size() != 3) return bad_argument();
    if (words[0] == "enable" && words[1] == "0") {
        board_switch.remove_all("mirror.");
        return 0;
    }
    const bool enable = words[0] == "enable" && words[1] == "1";
    if (!port_number(enable ? words[2] : words[1])) return bad_argument();
    if (enable) {
        board_switch.set("mirror.monitor", words[2]);
        return 0;
    }
    const auto directions = number(words[2]);
    if (words[0] != "target" || !directions || *directions < 0 || *directions > 3)
        return bad_argument();
    board_switch.set("mirror.target." + words[1], words[2]);
    return 0;
}

int remove_address(Switch& board_switch, const std::string& digits) {
    if (digits.size() != 12) return bad_argument();
    return board_switch.remove_address(digits) ? 0 : fail(1, "switch: no such address");
}

int act(Switch& board_switch, Words words) {
    const std::string name = words.empty() ? "" : words[0];
    if (words.size() >= 5 && name == "phy" && words[1] == "cl22")
        return phy(board_switch, words.subspan(2));
    if (words.size() >= 3 && name == "reg") return reg(board_switch, words.subspan(1));
    if (words.size() >= 3 && name == "vlan") return vlan(board_switch, words.subspan(1));
    if (words.size() >= 3 && name == "mirror") return mirror(board_switch, words.subspan(1));
    if (words.size() == 2 && name == "del") return remove_address(board_switch, words[1]);
    if (words.size() == 2 && name == "esw_cnt" && words[1] == "clear")
        return board_switch.clear_counters(), 0;
    if (words.size() == 1 && name == "clear") return board_switch.clear_addresses(), 0;
    return fail(1, "Usage: switch phy cl22|reg|vlan|mirror|esw_cnt clear|clear|del ...");
}

}  // namespace

int ethernet_switch(Words words) {
    Switch board_switch;
    const int status = act(board_switch, words);
    board_switch.save();
    return status;
}

}  // namespace board::tools
