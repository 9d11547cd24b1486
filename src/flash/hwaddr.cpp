#include <string.h>

#include <string_view>

#include "platform/flash.h"
#include "src/flash/uboot_env.h"
#include "src/host/host.h"
#include "src/host/runner.h"
#include "src/support/mac.h"
#include "src/support/table.h"
#include "src/support/text.h"
#include "src/wlmap/ifname.h"

using namespace platform;

namespace {

constexpr size_t kMacTextSize = 18;
constexpr uint8_t kFallback[kMacSize] = {0x00, 0x9F, 0x33, 0x00, 0x11, 0x20};
constexpr uint8_t kSecondRadioOffset = 2;  // in its calibration data, not as reported below

struct IfnameOffset {
    std::string_view ifname;
    uint8_t added;
};

constexpr IfnameOffset kOffsets[] = {
    {"eth0", 3},
    {"ra0",  2},
    {"rai0", 7},
    {"eth1", 1},
};
static_assert(is_key(kOffsets, &IfnameOffset::ifname));

// The addresses of one device differ in the last byte alone; it wraps without carry.
void add_to_last_byte(uint8_t mac[kMacSize], uint8_t added) {
    mac[kMacSize - 1] = static_cast<uint8_t>(mac[kMacSize - 1] + added);
}

}  // namespace

int get_hwaddr_flash_raw(const char* ifname, uint8_t mac[6]) {
    if (mac == nullptr) return 1;

    char line[32];
    if (get_uboot_env("ethaddr", line, sizeof line)) {
        strtomac(line, mac);
    } else {
        memcpy(mac, kFallback, kMacSize);
    }
    const IfnameOffset* row = find_row(kOffsets, &IfnameOffset::ifname, text_of(ifname));
    if (row != nullptr) add_to_last_byte(mac, row->added);
    return 1;
}

int get_hwaddr_flash(const char* ifname, char* text) {
    if (text == nullptr) return 1;

    uint8_t mac[8] = {};
    get_hwaddr_flash_raw(ifname, mac);
    Text out({text, kMacTextSize});
    for (int i = 0; i < kMacSize; ++i) out.put(i == 0 ? "" : ":").put_hex(mac[i], 2);
    return 1;
}

int set_hwaddr_flash_raw(const uint8_t mac[6]) {
    if (mac == nullptr) return 1;

    TextBuffer<128> text;
    for (int i = 0; i < kMacSize; ++i) text.put(i == 0 ? "" : ":").put_hex_lower(mac[i], 2);
    set_uboot_env("ethaddr", text.view());
    mt762x_update_wl_eeprom(mac);
    return 1;
}

int set_hwaddr_flash(const char* text) {
    uint8_t mac[8] = {};
    if (text == nullptr) return 1;
    strtomac(text, mac);
    return set_hwaddr_flash_raw(mac);
}

int mt762x_update_wl_eeprom(const uint8_t mac[6]) {
    if (mac == nullptr) return 0;

    uint8_t second[kMacSize];
    memcpy(second, mac, kMacSize);
    add_to_last_byte(second, kSecondRadioOffset);
    mt762x_set_eeprom_mac(IfName::main(0).c_str(), mac);
    mt762x_set_eeprom_mac(IfName::main(1).c_str(), second);
    return 0;
}

int mt762x_set_eeprom_mac(const char* ifname, const uint8_t mac[6]) {
    if (ifname == nullptr || mac == nullptr) return 0;

    // A word holds two bytes, the earlier one in its low half.
    run_host(Command<256>("iwpriv %s e2p 4=%02x%02x", ifname, mac[1], mac[0]));
    run_host(Command<256>("iwpriv %s e2p 6=%02x%02x", ifname, mac[3], mac[2]));
    run_host(Command<256>("iwpriv %s e2p 8=%02x%02x", ifname, mac[5], mac[4]));
    run_host(Command<256>("ated -i%s -c\"sync eeprom all\"", ifname));
    return 0;
}
