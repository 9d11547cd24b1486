// The kernel's pin file.
#include "src/gpio/pin_file.h"

#include "fuzz/target.h"
#include "platform/gpio.h"
#include "src/support/stream.h"

using namespace fuzz_target;

namespace {

// What a line of plain numbers holds, read in another way.
void compare(const std::string& line) {
    const std::unique_ptr<char[]> copy(new char[line.size() + 1]);
    std::memcpy(copy.get(), line.data(), line.size());
    Output<platform::PinState> state;
    if (!platform::parse_pin_line({copy.get(), line.size()}, *state.get())) {
        CLAIM(state.untouched());
        return;
    }
    int numbers[10];
    const int count = std::sscanf(line.c_str(), "%d:%d%d%d%d%d%d%d%d%d", numbers, numbers + 1,
                                  numbers + 2, numbers + 3, numbers + 4, numbers + 5, numbers + 6,
                                  numbers + 7, numbers + 8, numbers + 9);
    CLAIM(count == 10);
    for (int i = 0; i < 10; ++i) CLAIM(numbers[i] == state->numbers[i]);
}

}  // namespace

void fuzz(Pieces& input) {
    outside().text = input.rest();
    pushed_reset_button();
    check_wps_button(1, 3);
    std::string_view rest = input.rest();
    while (!rest.empty()) {
        const size_t end = std::min(rest.find('\n'), rest.size() - 1) + 1;
        const std::string_view line = rest.substr(0, end);
        if (line.find('\0') == line.npos) compare(std::string(line));
        rest.remove_prefix(end);
    }
}
