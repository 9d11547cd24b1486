// The PHYs of the switch's ports: IEEE 802.3 clause 22, as far as negotiation goes.
#include "board/model/switch.h"

namespace board {
namespace {

enum Register {
    kControl = 0,
    kStatus = 1,
    kAdvertisement = 4,
    kPartnerAbility = 5,
    kGigabitControl = 9,
    kGigabitStatus = 10,
};

constexpr uint16_t kReset = 0x8000;
constexpr uint16_t kNegotiate = 0x1000;
constexpr uint16_t kPowerDown = 0x0800;
constexpr uint16_t kRestart = 0x0200;

constexpr uint16_t kCapable = 0x7949;  // status: all 10 and 100 Mbit/s modes, negotiation
constexpr uint16_t kNegotiated = 0x0020;
constexpr uint16_t kLinkUp = 0x0004;

constexpr uint16_t kModeBits = 0x01E0;  // of registers 4 and 5
constexpr uint16_t kHalfModes = 0x00A0;
constexpr uint16_t kAnswered = 0x4001;     // register 5: acknowledged, IEEE 802.3
constexpr uint16_t kReceiversOk = 0x3000;  // register 10
constexpr uint16_t kGigabitFull = 0x0800;

// At power-up: everything is advertised and negotiated.
constexpr uint16_t default_of(int reg) {
    switch (reg) {
        case kControl:
            return 0x1140;
        case kAdvertisement:
            return 0x0DE1;
        case kGigabitControl:
            return 0x0300;
        default:
            return 0;
    }
}

std::string key(int port, std::string_view what) {
    return "phy." + std::to_string(port) + '.' + std::string(what);
}

std::string key(int port, int reg) {
    return key(port, std::to_string(reg));
}

}  // namespace

// Of two partners' common modes the fastest is taken, full duplex before half.
bool Switch::Link::half() const {
    if (gigabit != 0) return (gigabit & kGigabitFull) == 0;
    const uint16_t fast = common & 0x0180;
    const uint16_t taken = fast != 0 ? fast : common;
    return (taken & ~kHalfModes) == 0;
}

Switch::Link Switch::link(int port) const {
    const uint16_t control = phy(port, kControl);
    if ((control & kNegotiate) == 0 || (control & kPowerDown) != 0) return {};
    const LinkPartner& partner = wiring().partners[static_cast<size_t>(port)];
    const uint32_t advertised = number(key(port, "agreed"), 0);
    const uint32_t gigabit = number(key(port, "agreed_gigabit"), 0) << 2;
    return {static_cast<uint16_t>(advertised & kModeBits & partner.abilities),
            static_cast<uint16_t>(gigabit & partner.gigabit)};
}

uint16_t Switch::phy(int port, int reg) const {
    return static_cast<uint16_t>(number(key(port, reg), default_of(reg)));
}

// The link bit stays low until it was read once, and the link needs a while to come up.
uint16_t Switch::read_phy_status(int port) {
    const uint32_t polls = number(key(port, "negotiating"), 0);
    const bool up = polls == 0 && link(port).up();
    const bool was_down = number(key(port, "was_down"), 0) != 0;
    if (polls != 0) set_number(key(port, "negotiating"), polls - 1);
    set_number(key(port, "was_down"), !up);
    const int status = kCapable | (up ? kNegotiated : 0) | (up && !was_down ? kLinkUp : 0);
    return static_cast<uint16_t>(status);
}

uint16_t Switch::read_phy(int port, int reg) {
    if (port < 0 || port >= kPhyPorts || reg < 0 || reg > 31) return 0xFFFF;
    const LinkPartner& partner = wiring().partners[static_cast<size_t>(port)];
    const Link now = link(port);
    if (reg == kStatus) return read_phy_status(port);
    if (reg == kPartnerAbility)
        return now.up() ? static_cast<uint16_t>(kAnswered | partner.abilities) : uint16_t{0};
    if (reg == kGigabitStatus) {
        const int receivers = now.gigabit != 0 ? kReceiversOk : 0;
        return now.up() ? static_cast<uint16_t>(receivers | partner.gigabit) : uint16_t{0};
    }
    return phy(port, reg);
}

void Switch::write_phy(int port, int reg, uint16_t value) {
    if (port < 0 || port >= kPhyPorts || reg < 0 || reg > 31) return;
    if (reg == kStatus || reg == kPartnerAbility || reg == kGigabitStatus) return;
    if (reg == kControl && (value & kReset) != 0) {
        remove_all(key(port, ""));
        restart_negotiation(port);
        return;
    }
    const int kept = reg == kControl ? value & ~kRestart : value;
    set_number(key(port, reg), static_cast<uint32_t>(kept));
    if (reg == kControl && (value & kRestart) != 0) restart_negotiation(port);
}

void Switch::restart_negotiation(int port) {
    set_number(key(port, "agreed"), phy(port, kAdvertisement));
    set_number(key(port, "agreed_gigabit"), phy(port, kGigabitControl));
    set_number(key(port, "negotiating"), wiring().negotiation_polls);
    set_number(key(port, "was_down"), 1);
}

}  // namespace board
