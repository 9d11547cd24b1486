#include <linux/if.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "platform/switch.h"
#include "src/support/descriptor.h"

using namespace platform;

namespace {

// Private MII requests of the Ethernet driver.
constexpr unsigned long kMiiRead = 0x89F3;
constexpr unsigned long kMiiWrite = 0x89F4;
constexpr uint32_t kSwitchAddress = 31;  // the PHY address of the switch's own registers

struct MiiRequest {
    uint32_t phy_address;
    uint32_t offset;
    uint32_t value_in;
    uint32_t value_out;
    uint32_t reserved[4];
};
static_assert(sizeof(MiiRequest) == 32);
static_assert(offsetof(MiiRequest, value_out) == 12);

constinit int control_socket = -1;

// The board's register users have no way on without the switch.
[[noreturn]] void switch_ioctl_abort() {
    perror("ioctl");
    switch_ioctl_fini();
    exit(0);
}

void exchange(unsigned long kind, MiiRequest& mii) {
    ifreq request = {};
    memcpy(request.ifr_name, "eth0", sizeof "eth0");
    request.ifr_data = reinterpret_cast<char*>(&mii);
    if (control(control_socket, kind, &request) == -1) switch_ioctl_abort();
}

}  // namespace

int switch_ioctl_init() {
    control_socket = open_control_socket();
    if (control_socket == -1) {
        perror("socket");
        exit(0);
    }
    return control_socket;
}

int switch_ioctl_fini() {
    const int result = close(control_socket);
    control_socket = -1;
    return result;
}

int reg_read_ioctl(uint32_t offset, uint32_t* value) {
    if (value == nullptr) return 0;
    MiiRequest mii = {kSwitchAddress, offset, 0, 0, {}};
    exchange(kMiiRead, mii);
    *value = mii.value_out;
    return 0;
}

int reg_write_ioctl(uint32_t offset, uint32_t value) {
    MiiRequest mii = {kSwitchAddress, offset, value, 0, {}};
    exchange(kMiiWrite, mii);
    return 0;
}

int reg_read(uint32_t offset, uint32_t* value) {
    return reg_read_ioctl(offset, value);
}

int reg_write(uint32_t offset, uint32_t value) {
    return reg_write_ioctl(offset, value);
}
