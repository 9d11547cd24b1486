// What the switch tool answers about a PHY register.
#include "fuzz/target.h"
#include "platform/switch.h"
#include "src/switch/phy.h"

using namespace fuzz_target;

void fuzz(Pieces& input) {
    port_setting setting;
    fill(setting, input.next());
    outside().text = input.rest();

    Output<port_setting> state;
    CLAIM(get_link_status(1, state.get()) == 0);
    CLAIM(is_terminated(state->mode) && is_terminated(state->speed));
    CLAIM(is_terminated(state->duplex));
    set_port_config(1, &setting);

    const std::string_view line = input.rest();
    const std::unique_ptr<char[]> copy(new char[line.size() + 1]);
    std::memcpy(copy.get(), line.data(), line.size());
    const int32_t value = platform::parse_phy_answer({copy.get(), line.size()});
    CLAIM(line.find('=') != line.npos || value == -1);
}
