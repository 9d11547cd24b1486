#include "platform/switch.h"
#include "src/host/host_lock.h"
#include "src/support/message.h"
#include "src/support/pause.h"
#include "src/switch/registers.h"

using namespace platform;

namespace {

constexpr int kMostWalked = 2045;      // the table holds 2048 entries
constexpr int kMostPolls = 4096;       // in a row without an entry: twenty seconds
constexpr int kMostEmptied = 1 << 16;  // aged entries; the search goes round a broken table

uint32_t read_register(uint32_t offset) {
    uint32_t value = 0;
    reg_read(offset, &value);
    return value;
}

bool is_in_use(uint32_t attributes) {
    return attributes >> 24 != 0;
}

switch_mac_entry entry_of(uint32_t high, uint32_t low, uint32_t attributes) {
    const auto byte = [](uint32_t value, int shift) {
        return static_cast<uint8_t>(value >> shift);
    };
    return {
        .mac = {byte(high, 24), byte(high, 16), byte(high, 8), byte(high, 0), byte(low, 24),
                byte(low, 16)},
        .info = byte(low, 0),
        .port_map = static_cast<uint8_t>(attributes >> 4 & 0x7F),
    };
}

bool is_wanted(const switch_mac_entry& entry, int port_mask) {
    const bool is_group = (entry.mac[0] & 1) != 0;
    return !is_group && (entry.port_map & port_mask) != 0;
}

int give_up(int stored) {
    print_error("Warning:switch table search given up, %d entries found\n", stored);
    return stored;
}

int walk(switch_mac_entry* entries, int capacity, int port_mask) {
    int stored = 0;
    int walked = 0;
    int polls = 0;
    int emptied = 0;
    reg_write(kTableControl, kSearchFirst);
    while (stored < capacity) {
        const uint32_t status = read_register(kTableControl);
        if ((status & (kSearchPresented | kSearchBusy)) != kSearchPresented) {
            if ((status & kSearchEnded) != 0) break;
            if (++polls > kMostPolls) return give_up(stored);
            pause_ms(5);
            continue;
        }
        polls = 0;
        const uint32_t attributes = read_register(kTableAttributes);
        if (!is_in_use(attributes)) {
            if (++emptied > kMostEmptied) return give_up(stored);
            reg_write(kTableControl, kSearchNext);
            continue;
        }
        const uint32_t high = read_register(kTableAddressHigh);
        const uint32_t low = read_register(kTableAddressLow);
        const switch_mac_entry entry = entry_of(high, low, attributes);
        if (is_wanted(entry, port_mask)) entries[stored++] = entry;
        if ((status & kSearchEnded) != 0) break;
        reg_write(kTableControl, kSearchNext);
        if (++walked > kMostWalked) break;
        pause_ms(1);
    }
    return stored;
}

}  // namespace

int mt753x_get_all_macentry(switch_mac_entry* entries, int capacity, int port_mask) {
    if (entries == nullptr) return 0;
    switch_ioctl_init();
    const int stored = walk(entries, capacity, port_mask);
    switch_ioctl_fini();
    return stored;
}

int ethswitch_get_all_macentry(switch_mac_entry* entries, int capacity, int port_mask) {
    if (entries == nullptr) return 0;
    const SwitchLock lock;
    const int stored = mt753x_get_all_macentry(entries, capacity, port_mask);
    if (stored >= capacity) print_error("Warning:need more switch entry buffer\n");
    return stored;
}
