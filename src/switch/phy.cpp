#include "src/switch/phy.h"

#include "src/support/command.h"
#include "src/support/number.h"
#include "src/support/stream.h"

namespace platform {

int32_t parse_phy_answer(std::string_view line) {
    const size_t equals = line.rfind('=');
    if (equals == std::string_view::npos) return -1;
    line.remove_prefix(equals + 1);
    return has_prefix(line, "0x") ? static_cast<int32_t>(hex_number(line)) : 0;
}

int32_t phy_cl22_read(int switch_port, int reg) {
    const Command<128> command("switch phy cl22 r %d %d", switch_port, reg);
    Pipe tool(open_command_output(command.text()));
    char buffer[128];
    const auto line = tool.read_line(buffer);
    if (tool.failed()) return 0;
    return parse_phy_answer(line.value_or(std::string_view()));
}

}  // namespace platform
