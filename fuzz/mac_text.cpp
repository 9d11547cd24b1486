// MAC addresses as texts or raw bytes.
#include <cctype>

#include "platform/switch.h"
#include "switch/mac_edit.h"
#include "target.h"

using namespace fuzz_target;

namespace {

// As a caller has to tell it from raw bytes.
bool is_text(const std::string& address) {
    const auto first = static_cast<unsigned char>(address.empty() ? '\0' : address.front());
    const size_t separator = address.find_first_of(":-");
    return (std::isspace(first) || std::isxdigit(first)) && separator < platform::kMacSize &&
           address.find('\0') > separator;
}

}  // namespace

// A text with its terminator, or six bytes with nothing behind them.
void fuzz(Pieces& input) {
    std::string bytes(input.next());
    if (!is_text(bytes)) bytes.resize(platform::kMacSize - 1, '#');
    const std::unique_ptr<char[]> address(new char[bytes.size() + 1]);
    std::memcpy(address.get(), bytes.c_str(), bytes.size() + 1);

    ethswitch_del_mac(address.get());
    CLAIM(outside().commands.size() == 1);
    const std::string& command = outside().commands[0];
    CLAIM(command.size() == std::strlen("switch del ") + 12);
    CLAIM(command.find_first_not_of("0123456789ABCDEF", 11) == command.npos);
}
