// Hosts that answer in another way than the virtual board's: in one that their contract allows, or
// with more than it says to a reader that is not told a size.
#include <cstring>

#include "platform/flash.h"
#include "platform/gpio.h"
#include "platform/profile.h"
#include "platform/switch.h"
#include "src/host/host.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/library_hook.h"

namespace {

using harness::LibraryHook;

constexpr size_t kBeyond = 512;

bool writes = true;  // or the readers leave their buffers as they are
int devices = 0;     // how often the device name was asked

int fill(void* text, size_t size) {
    if (writes) memset(text, 'x', size);
    return 0;
}

int write_block(const char* name, void* block) {
    if (!writes) return 0;
    const size_t longest = strcmp(name, "hw") == 0 ? sizeof(hw_info) : 4096;
    memset(static_cast<char*>(block) + longest, 'x', kBeyond);
    return get_si(name, block);
}

int write_address(char* address, char*, char*) {
    return fill(address, 64 + kBeyond);
}

int write_wan_type(const char*, char* type) {
    return fill(type, 128 + kBeyond);
}

int write_status(const char*, char* value) {
    return fill(value, 256 + kBeyond);
}

int write_value(const char*, const char*, char* value) {
    return fill(value, 128 + kBeyond);
}

int write_element(vendor_element* element) {
    return fill(element, sizeof *element);
}

// Of the first radio only.
int write_device(char* text, int size) {
    return devices++ == 0 ? fill(text, static_cast<size_t>(size)) : 0;
}

int write_silence(void* record, int unit) {
    return unit == 1 ? fill(record, sizeof(uint32_t)) : 0;
}

class HostAnswers : public harness::SampleRadios {
protected:
    HostAnswers() {
        writes = true;
        devices = 0;
        record(0).apcli_enable = record(0).apcli_wan = 1;
    }

private:
    const LibraryHook block_{"get_si", write_block};
    const LibraryHook address_{"get_lan_ipconfig", write_address};
    const LibraryHook wan_type_{"get_wan_type", write_wan_type};
    const LibraryHook status_{"istatus_get_value_direct", write_status};
    const LibraryHook value_{"genconfig_get_value_direct", write_value};
    const LibraryHook element_{"easymesh_get_kdx_ie", write_element};
    const LibraryHook device_{"easymesh_make_wsc_kdx_type_str", write_device};
    const LibraryHook silence_{"get_led_silent_control", write_silence};
};

TEST_F(HostAnswers, MayBeLongerThanTheirContractSays) {
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

// The device name is asked anew for each radio; all else here is missing the second time.
TEST_F(HostAnswers, ThatAreNotWrittenAreNotThoseOfAnEarlierCall) {
    host().hw.run_led_gpio = 18;
    for (const bool written : {true, false}) {
        writes = written;
        apply(0);
        expect_keys(0, {"WscDeviceName=" + std::string(written ? 127 : 0, 'x')});
        write(harness::kPinPath, "");
        platform_run_led_control(1);
        EXPECT_EQ(written ? "out 18 0" : "out 0 0", read(harness::kPinPath));
        char operation[32];
        get_run_led_op(operation);
        EXPECT_EQ(std::string(written ? 31 : 0, 'x'), operation);
        EXPECT_EQ(2 * written, get_run_led_state() & 2);
        expect_keys(1, {"WscDeviceName="});
    }
    const std::string nothing(32, '0');
    expect_keys(0, {"own_ip_addr=", "WscModelName=",
                    "KDX_IE_AP=" + nothing + ';' + nothing + ';' + nothing + ';' + nothing});
    err();
}

TEST_F(HostAnswers, OfALockAreHandedBackAsTheyAre) {
    static intptr_t handle, unlocked;
    const LibraryHook lock(
        "lock_file", +[](const char*) { return handle; });
    const LibraryHook unlock(
        "unlock_file", +[](intptr_t given) {
            unlocked = given;
            return 0;
        });
    for (const intptr_t any : {intptr_t{0}, intptr_t{-1}, intptr_t{0x7F0012345678}, INTPTR_MIN}) {
        handle = any;
        unlocked = 42;
        ethswitch_clear_mactable();
        EXPECT_EQ(any, unlocked);
    }
}

TEST_F(HostAnswers, OfAMissingOperationAreMinusOne) {
    static int result;
    const LibraryHook status(
        "istatus_get_value_direct", +[](const char*, char* value) {
            strcpy(value, "y");
            return result;
        });
    for (const int any : {0, 7, -2, -1}) {
        result = any;
        char operation[32];
        EXPECT_EQ(0, get_run_led_op(operation));
        EXPECT_STREQ(any == -1 ? "blink" : "y", operation);
    }
}

}  // namespace
