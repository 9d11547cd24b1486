#include <stddef.h>

#include "platform/switch.h"
#include "src/host/host_lock.h"
#include "src/support/command.h"
#include "src/switch/ports.h"

using namespace platform;

namespace {

// MIB counter registers of a port.
struct PortMib {
    uint32_t rx_unicast, rx_multicast, rx_broadcast, rx_crc_errors, rx_dropped;
    uint32_t rx_bytes_high, rx_bytes_low;
    uint32_t tx_unicast, tx_multicast, tx_broadcast, tx_collisions;
    uint32_t tx_bytes_high, tx_bytes_low;
};

struct MibRow {
    uint32_t offset;
    uint32_t PortMib::*counter;
};

// In the order in which they are read.
constexpr MibRow kMib[] = {
    {0x68, &PortMib::rx_unicast   },
    {0x6C, &PortMib::rx_multicast },
    {0x70, &PortMib::rx_broadcast },
    {0x78, &PortMib::rx_crc_errors},
    {0xB4, &PortMib::rx_dropped   },
    {0xAC, &PortMib::rx_bytes_high},
    {0xA8, &PortMib::rx_bytes_low },
    {0x08, &PortMib::tx_unicast   },
    {0x0C, &PortMib::tx_multicast },
    {0x10, &PortMib::tx_broadcast },
    {0x14, &PortMib::tx_collisions},
    {0x4C, &PortMib::tx_bytes_high},
    {0x48, &PortMib::tx_bytes_low },
};

uint64_t joined(uint32_t high, uint32_t low) {
    return uint64_t{high} << 32 | low;
}

PortMib read_mib(int port) {
    const uint32_t base = 0x4000 + static_cast<uint32_t>(port) * 0x100;
    PortMib mib = {};
    switch_ioctl_init();
    for (const MibRow& row : kMib) reg_read(base + row.offset, &(mib.*row.counter));
    switch_ioctl_fini();
    return mib;
}

void put_counters(const PortMib& mib, port_counters& counters) {
    counters.rx_packets = uint64_t{mib.rx_unicast} + mib.rx_multicast + mib.rx_broadcast;
    counters.rx_bytes = joined(mib.rx_bytes_high, mib.rx_bytes_low);
    counters.rx_broadcast = mib.rx_broadcast;
    counters.rx_multicast = mib.rx_multicast;
    counters.zero0 = 0;
    counters.rx_dropped = mib.rx_dropped;
    counters.rx_crc_errors = mib.rx_crc_errors;
    counters.zero1 = 0;
    counters.tx_packets = uint64_t{mib.tx_unicast} + mib.tx_multicast + mib.tx_broadcast;
    counters.tx_bytes = joined(mib.tx_bytes_high, mib.tx_bytes_low);
    counters.tx_broadcast = mib.tx_broadcast;
    counters.tx_multicast = mib.tx_multicast;
    counters.tx_collisions = mib.tx_collisions;
}

}  // namespace

int get_eport_stat(int user_port, port_counters* counters) {
    if (counters == nullptr) return -1;
    const SwitchLock lock;
    const int port = switch_port_of(hardware(), user_port);
    if (port == kNoPort) return -1;
    put_counters(read_mib(port), *counters);
    return 0;
}

int clear_port_statistics() {
    const SwitchLock lock;
    run_shell(Command<64>("switch esw_cnt clear"));
    return 0;
}
