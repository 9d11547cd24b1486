// The switch's registers, read and written by reg_read() and reg_write(), and those of its PHYs.
#pragma once

#include <stdint.h>

namespace platform {

// The address table: a search presents one entry after the other in the three registers behind
// its control.
inline constexpr uint32_t kTableControl = 0x80;
inline constexpr uint32_t kTableAddressHigh = 0x84;
inline constexpr uint32_t kTableAddressLow = 0x88;
inline constexpr uint32_t kTableAttributes = 0x8C;

inline constexpr uint32_t kSearchFirst = 0x8004;  // control, as written
inline constexpr uint32_t kSearchNext = 0x8005;
inline constexpr uint32_t kSearchPresented = 0x2000;  // control, as read
inline constexpr uint32_t kSearchEnded = 0x4000;
inline constexpr uint32_t kSearchBusy = 0x8000;

// A port's MAC control.
constexpr uint32_t mac_control(int port) {
    return 0x3000 + static_cast<uint32_t>(port) * 0x100;
}
inline constexpr uint32_t kMacForced = 0x8000;  // keeps the port's link down

// A port's counters, 32 bits each, from mib_base() on.
constexpr uint32_t mib_base(int port) {
    return 0x4000 + static_cast<uint32_t>(port) * 0x100;
}
inline constexpr uint32_t kMibTxUnicast = 0x08;
inline constexpr uint32_t kMibTxMulticast = 0x0C;
inline constexpr uint32_t kMibTxBroadcast = 0x10;
inline constexpr uint32_t kMibTxCollisions = 0x14;
inline constexpr uint32_t kMibTxBytesLow = 0x48;
inline constexpr uint32_t kMibTxBytesHigh = 0x4C;
inline constexpr uint32_t kMibRxUnicast = 0x68;
inline constexpr uint32_t kMibRxMulticast = 0x6C;
inline constexpr uint32_t kMibRxBroadcast = 0x70;
inline constexpr uint32_t kMibRxCrcErrors = 0x78;
inline constexpr uint32_t kMibRxBytesLow = 0xA8;
inline constexpr uint32_t kMibRxBytesHigh = 0xAC;
inline constexpr uint32_t kMibRxDropped = 0xB4;

// PHY registers (IEEE 802.3 clause 22: 22.2.4 and 40.5.1.1) and their bits.
inline constexpr int kPhyControl = 0;
inline constexpr int32_t kPhyRestart = 0x0200;  // the negotiation

inline constexpr int kPhyStatus = 1;
inline constexpr int32_t kPhyLinkUp = 0x0004;  // latched low

inline constexpr int kPhyAdvertisement = 4;
inline constexpr int kPhyPartnerAbility = 5;
inline constexpr int32_t kPhy10Half = 0x0020;  // of both registers
inline constexpr int32_t kPhy10Full = 0x0040;
inline constexpr int32_t kPhy100Half = 0x0080;
inline constexpr int32_t kPhy100Full = 0x0100;

inline constexpr int kPhyGigabitControl = 9;
inline constexpr int32_t kPhyGigabitHalf = 0x0100;
inline constexpr int32_t kPhyGigabitFull = 0x0200;

inline constexpr int kPhyGigabitStatus = 10;
inline constexpr int32_t kPhyReceiversOk = 0x3000;  // local and remote
inline constexpr int32_t kPhyPartnerGigabitHalf = 0x0400;
inline constexpr int32_t kPhyPartnerGigabitFull = 0x0800;

}  // namespace platform
