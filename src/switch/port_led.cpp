#include <string_view>

#include "platform/switch.h"
#include "src/host/runner.h"
#include "src/switch/ports.h"

using namespace platform;

namespace {

struct LedRow {
    std::string_view chip;
    CommandFormat<const char*> command;
    const char* on;
    const char* off;
};

// LED registers of each chip, hexadecimal, in the order of writing.
constexpr LedRow kLeds[] = {
    {"mt7530", "switch reg w 7d00 %s", "77777",    "66666"   },
    {"mt7531", "switch reg w 7c10 %s", "11111111", "11011111"},
    {"mt7531", "switch reg w 7c14 %s", "11110110", "10110000"},
    {"mt7531", "switch reg w 7c18 %s", "00000111", "00000110"},
};

}  // namespace

int set_port_led_all(int on) {
    const hw_info hw = hardware();
    for (const LedRow& row : kLeds)
        if (row.chip == field_text(hw.switch_chip))
            run_host(Command<64>(row.command, on != 0 ? row.on : row.off));
    return 0;
}
