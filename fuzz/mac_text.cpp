// MAC addresses as texts or raw bytes.
#include <algorithm>

#include "fuzz/target.h"
#include "platform/switch.h"
#include "src/switch/mac_edit.h"

using namespace fuzz_target;

// A text with its terminator, or six bytes with nothing behind them.
void fuzz(Pieces& input) {
    std::string bytes(input.next());
    const size_t separator = std::min(bytes.find_first_of(":-"), bytes.find('\0'));
    const bool is_text = separator < platform::kMacSize && bytes[separator] != '\0';
    bytes.resize(is_text ? bytes.size() + 1 : size_t{platform::kMacSize});
    const std::unique_ptr<char[]> address(new char[bytes.size()]);
    std::memcpy(address.get(), bytes.data(), bytes.size());

    ethswitch_del_mac(address.get());
    CLAIM(outside().commands.size() == 1);
    const std::string& command = outside().commands[0];
    CLAIM(command.size() == std::strlen("switch del ") + 12);
    CLAIM(command.find_first_not_of("0123456789ABCDEF", 11) == command.npos);
}
