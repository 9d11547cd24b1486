#include <string_view>

#include "platform/switch.h"
#include "src/host/host_lock.h"
#include "src/host/runner.h"
#include "src/support/message.h"
#include "src/switch/phy.h"
#include "src/switch/ports.h"
#include "src/switch/registers.h"

using namespace platform;

namespace {

constexpr int32_t kAdvertise10 = kPhy10Full | kPhy10Half;
constexpr int32_t kAdvertise = kPhy100Full | kPhy100Half | kAdvertise10;
constexpr int32_t kAdvertiseGigabit = kPhyGigabitFull | kPhyGigabitHalf;

// What a fixed speed advertises.
struct Advertised {
    std::string_view speed;
    std::string_view duplex;
    int32_t abilities;
    int32_t gigabit;
};

constexpr Advertised kFixedSpeeds[] = {
    {"100",  "full", kAdvertise,                 0                },
    {"100",  "half", kPhy100Half | kAdvertise10, 0                },
    {"10",   "full", kAdvertise10,               0                },
    {"10",   "half", kPhy10Half,                 0                },
    {"1000", "full", 0,                          kAdvertiseGigabit},
    {"1000", "half", 0,                          kPhyGigabitHalf  },
};
constexpr Advertised kNothing = {"", "", 0, 0};

const Advertised& advertised(std::string_view speed, std::string_view duplex) {
    for (const Advertised& row : kFixedSpeeds)
        if (row.speed == speed && row.duplex == duplex) return row;
    return kNothing;
}

// Each access has the control socket to itself.
uint32_t read_alone(uint32_t offset) {
    uint32_t value = 0;
    switch_ioctl_init();
    reg_read(offset, &value);
    switch_ioctl_fini();
    return value;
}

void write_alone(uint32_t offset, uint32_t value) {
    switch_ioctl_init();
    reg_write(offset, value);
    switch_ioctl_fini();
}

void enable_mac(int port, bool enable) {
    const uint32_t offset = mac_control(port);
    const uint32_t control = read_alone(offset);
    write_alone(offset, enable ? control & ~kMacForced : control | kMacForced);
}

// A PHY register's new value comes from a fresh reading of it.
void change_phy(int port, int reg, int32_t clear, int32_t set) {
    const int32_t value = (phy_cl22_read(port, reg) & ~clear) | set;
    run_host(Command<64>("switch phy cl22 w %d %d %d", port, reg, value));
}

void advertise(int port, int32_t clear, const Advertised& what) {
    change_phy(port, kPhyAdvertisement, clear & kAdvertise, what.abilities);
    change_phy(port, kPhyGigabitControl, clear & kAdvertiseGigabit, what.gigabit);
    change_phy(port, kPhyControl, 0, kPhyRestart);
}

int apply_port_config(int user_port, const port_setting& setting) {
    const std::string_view mode = field_text(setting.mode);
    if (mode == "loop" || mode == "loopoff") {  // whatever port the index names
        print_out("Not implemnted..%s\n", TextCopy<sizeof setting.mode>(mode).c_str());
        return 0;
    }
    const int port = switch_port_of(hardware(), user_port);
    if (port == kNoPort) return -1;
    if (mode == "on" || mode == "off") {
        enable_mac(port, mode == "on");
    } else if (mode == "auto") {
        enable_mac(port, true);
        advertise(port, 0, {"", "", kAdvertise, kAdvertiseGigabit});
    } else {
        advertise(port, kAdvertise | kAdvertiseGigabit,
                  advertised(field_text(setting.speed), field_text(setting.duplex)));
    }
    return 0;
}

void apply_stored(int user_port) {
    port_setting setting = {};
    if (read_portconfig(user_port, &setting) != 0) set_port_config(user_port, &setting);
}

}  // namespace

int set_port_config(int user_port, const port_setting* setting) {
    if (setting == nullptr) return -1;
    const SwitchLock lock;
    return apply_port_config(user_port, *setting);
}

int init_portconfig() {
    const hw_info hw = hardware();
    for (int i = 1; i <= lan_ports(hw); ++i) apply_stored(i);
    for (int j = 0; j < wan_ports(hw); ++j) apply_stored(kFirstWanPort + j);
    return 0;
}
