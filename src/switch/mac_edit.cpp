#include "src/switch/mac_edit.h"

#include <string.h>

#include "platform/switch.h"
#include "src/host/host_lock.h"
#include "src/host/runner.h"
#include "src/support/number.h"

namespace platform {
namespace {

// ":" goes before "-"; nothing for raw bytes, behind which there may be no memory of ours.
char separator_of(const char* address) {
    const std::string_view head(address, strnlen(address, kMacSize));
    for (const char separator : {':', '-'})
        if (head.find(separator) != std::string_view::npos) return separator;
    return '\0';
}

// One or two digits each behind any blanks, up to the first field that is none.
void read_fields(const char* text, char separator, uint8_t (&mac)[kMacSize]) {
    for (uint8_t& byte : mac) {
        while (is_space(*text)) ++text;
        if (hex_digit(*text) < 0) return;
        for (int digits = 0; digits < 2 && hex_digit(*text) >= 0; ++digits)
            byte = static_cast<uint8_t>(byte << 4 | hex_digit(*text++));
        if (*text++ != separator) return;
    }
}

}  // namespace

void read_mac(const char* address, uint8_t (&mac)[kMacSize]) {
    memset(mac, 0, sizeof mac);
    const char separator = separator_of(address);
    if (separator == '\0') {
        memcpy(mac, address, sizeof mac);
    } else {
        read_fields(address, separator, mac);
    }
}

}  // namespace platform

using namespace platform;

int ethswitch_del_mac(const void* address) {
    if (address == nullptr) return 0;

    uint8_t mac[kMacSize];
    read_mac(static_cast<const char*>(address), mac);
    TextBuffer<2 * kMacSize + 1> digits;
    for (const uint8_t byte : mac) digits.put_hex(byte, 2);
    const Command<64> command("switch del %s", digits.view());
    const SwitchLock lock;
    system3("%s", command.text());
    return 0;
}

int ethswitch_clear_mactable() {
    const SwitchLock lock;
    run_shell(Command<64>("switch clear"));
    return 0;
}
