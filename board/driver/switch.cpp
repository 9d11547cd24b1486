#include "board/driver/switch.h"

#include <net/if.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "board/model/switch.h"
#include "board/store/journal.h"

namespace board {
namespace {

constexpr unsigned long kMiiRead = 0x89F3;
constexpr unsigned long kMiiWrite = 0x89F4;
constexpr uint32_t kSwitchAddress = 31;
constexpr uint32_t kLastRegister = 0xFFFC;
constexpr uint32_t kSearchControl = 0x80;  // searching is a question, not an effect

struct MiiRequest {
    uint32_t phy_address;
    uint32_t offset;
    uint32_t value_in;
    uint32_t value_out;
};

std::string hexadecimal(uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "%x", value);
    return text;
}

bool exists(const MiiRequest& mii) {
    if (mii.phy_address == kSwitchAddress)
        return mii.offset <= kLastRegister && mii.offset % 4 == 0;
    return mii.phy_address < kPhyPorts && mii.offset < 32;
}

void read_value(Switch& board_switch, MiiRequest& mii) {
    mii.value_out = mii.phy_address == kSwitchAddress
                        ? board_switch.read_register(mii.offset)
                        : board_switch.read_phy(static_cast<int>(mii.phy_address),
                                                static_cast<int>(mii.offset));
}

void write_value(Switch& board_switch, const MiiRequest& mii) {
    if (mii.phy_address != kSwitchAddress) {
        board_switch.write_phy(static_cast<int>(mii.phy_address), static_cast<int>(mii.offset),
                               static_cast<uint16_t>(mii.value_in));
        return;
    }
    if (mii.offset != kSearchControl)
        journal({"register", hexadecimal(mii.offset), hexadecimal(mii.value_in)});
    board_switch.write_register(mii.offset, mii.value_in);
}

}  // namespace

std::optional<int> switch_ioctl(unsigned long request, void* argument) {
    if (request != kMiiRead && request != kMiiWrite) return std::nullopt;
    const auto* const interface = static_cast<const ifreq*>(argument);
    if (std::strcmp(interface->ifr_name, "eth0") != 0) return std::nullopt;

    // The library's record goes on behind these words; they are not the driver's.
    MiiRequest mii;
    std::memcpy(&mii, interface->ifr_data, sizeof mii);
    if (!exists(mii)) {
        errno = EINVAL;
        return -1;
    }
    Switch board_switch;
    if (request == kMiiRead) {
        read_value(board_switch, mii);
        std::memcpy(interface->ifr_data, &mii, sizeof mii);
    } else {
        write_value(board_switch, mii);
    }
    board_switch.save();
    return 0;
}

}  // namespace board
