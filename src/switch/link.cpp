#include "platform/switch.h"
#include "src/host/host_lock.h"
#include "src/support/text.h"
#include "src/switch/phy.h"
#include "src/switch/ports.h"
#include "src/switch/registers.h"

using namespace platform;

namespace {

constexpr int32_t kPartnerGigabit = kPhyPartnerGigabitFull | kPhyPartnerGigabitHalf;
constexpr int32_t k100 = kPhy100Full | kPhy100Half;

const char* duplex_text(bool full) {
    return full ? "Full" : "Half";
}

void put_state(port_setting& state, const char* mode, const char* speed, const char* duplex) {
    copy_text(state.mode, mode);
    copy_text(state.speed, speed);
    copy_text(state.duplex, duplex);
}

// The link bit is latched low: the first reading tells of the past, and one that finds the link
// down may still do so.
bool has_link(int port) {
    phy_cl22_read(port, kPhyStatus);
    if ((phy_cl22_read(port, kPhyStatus) & kPhyLinkUp) != 0) return true;
    return (phy_cl22_read(port, kPhyStatus) & kPhyLinkUp) != 0;
}

void read_link_status(int port, port_setting& state) {
    if (!has_link(port)) {
        put_state(state, "Off", "--", "--");
        return;
    }
    const int32_t gigabit = phy_cl22_read(port, kPhyGigabitStatus);
    if ((gigabit & kPhyReceiversOk) == kPhyReceiversOk && (gigabit & kPartnerGigabit) != 0) {
        put_state(state, "On", "1G", duplex_text((gigabit & kPhyPartnerGigabitFull) != 0));
        return;
    }
    const int32_t partner = phy_cl22_read(port, kPhyPartnerAbility);
    const int32_t common = partner & phy_cl22_read(port, kPhyAdvertisement);
    if ((common & k100) != 0) {
        put_state(state, "On", "100", duplex_text((common & kPhy100Full) != 0));
    } else {
        put_state(state, "On", "10", duplex_text((common & kPhy10Full) != 0));
    }
}

}  // namespace

int get_link_status(int user_port, port_setting* state) {
    if (state == nullptr) return -1;
    const SwitchLock lock;
    const int port = switch_port_of(hardware(), user_port);
    if (port == kNoPort) return -1;
    read_link_status(port, *state);
    return 0;
}
