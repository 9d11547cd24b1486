#include <stddef.h>

#include "platform/switch.h"
#include "src/host/host_lock.h"
#include "src/support/command.h"
#include "src/switch/ports.h"
#include "src/switch/registers.h"

using namespace platform;

namespace {

// MIB counters of a port.
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
    {kMibRxUnicast,    &PortMib::rx_unicast   },
    {kMibRxMulticast,  &PortMib::rx_multicast },
    {kMibRxBroadcast,  &PortMib::rx_broadcast },
    {kMibRxCrcErrors,  &PortMib::rx_crc_errors},
    {kMibRxDropped,    &PortMib::rx_dropped   },
    {kMibRxBytesHigh,  &PortMib::rx_bytes_high},
    {kMibRxBytesLow,   &PortMib::rx_bytes_low },
    {kMibTxUnicast,    &PortMib::tx_unicast   },
    {kMibTxMulticast,  &PortMib::tx_multicast },
    {kMibTxBroadcast,  &PortMib::tx_broadcast },
    {kMibTxCollisions, &PortMib::tx_collisions},
    {kMibTxBytesHigh,  &PortMib::tx_bytes_high},
    {kMibTxBytesLow,   &PortMib::tx_bytes_low },
};

uint64_t joined(uint32_t high, uint32_t low) {
    return uint64_t{high} << 32 | low;
}

PortMib read_mib(int port) {
    PortMib mib = {};
    switch_ioctl_init();
    for (const MibRow& row : kMib) reg_read(mib_base(port) + row.offset, &(mib.*row.counter));
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
