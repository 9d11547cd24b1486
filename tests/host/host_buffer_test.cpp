// Host readers that are not told the size of their buffer and write more than their contract says.
#include <cstring>

#include "platform/flash.h"
#include "platform/gpio.h"
#include "src/host/host.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/library_hook.h"

namespace {

using harness::LibraryHook;

constexpr size_t kBeyond = 512;

int write_block(const char* name, void* block) {
    const size_t longest = strcmp(name, "hw") == 0 ? sizeof(hw_info) : 4096;
    memset(static_cast<char*>(block) + longest, 'x', kBeyond);
    return get_si(name, block);
}

int write_address(char* address, char*, char*) {
    memset(address, 'x', 64 + kBeyond);
    return 0;
}

int write_wan_type(const char*, char* type) {
    memset(type, 'x', 128 + kBeyond);
    return 0;
}

int write_status(const char*, char* value) {
    memset(value, 'x', 256 + kBeyond);
    return 0;
}

int write_value(const char*, const char*, char* value) {
    memset(value, 'x', 128 + kBeyond);
    return 0;
}

class HostBuffer : public harness::SampleRadios {
    const LibraryHook block_{HOST_HOOK(get_si, write_block)};
    const LibraryHook address_{HOST_HOOK(get_lan_ipconfig, write_address)};
    const LibraryHook wan_type_{HOST_HOOK(get_wan_type, write_wan_type)};
    const LibraryHook status_{HOST_HOOK(istatus_get_value_direct, write_status)};
    const LibraryHook value_{HOST_HOOK(genconfig_get_value_direct, write_value)};
};

TEST_F(HostBuffer, HasRoomForAHostThatWritesTooMuch) {
    record(0).apcli_enable = record(0).apcli_wan = 1;
    EXPECT_NE("", apply(0));
    expect_keys(0, {"own_ip_addr=" + std::string(64, 'x')});

    wireless_conf records[PLATFORM_BSS_MAX] = {};
    EXPECT_LE(2, set_quolex_helper_bss(records, 1));
    EXPECT_EQ(0, init_gpio_after_insmod());
    char operation[32];
    EXPECT_EQ(0, get_run_led_op(operation));
    EXPECT_EQ(std::string(31, 'x'), operation);
    EXPECT_EQ(-1, check_eeprom());
    EXPECT_NE("", err() + out());
}

}  // namespace
