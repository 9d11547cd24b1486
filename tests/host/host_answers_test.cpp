// Hosts that answer in another way than the virtual board's: in one that their contract allows, or
// with more than it says to a reader that is not told a size.
#include <climits>
#include <cstring>
#include <memory>
#include <vector>

#include "platform/flash.h"
#include "platform/gpio.h"
#include "platform/profile.h"
#include "platform/switch.h"
#include "platform/wireless.h"
#include "platform/wps.h"
#include "src/host/host.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/library_hook.h"

namespace {

using harness::LibraryHook;

constexpr size_t kBeyond = 512;

char letter = 'x';  // what the readers write, nothing with 0
int devices = 0;    // how often the device name was asked

int fill(void* text, size_t size) {
    if (letter != 0) memset(text, letter, size);
    return 0;
}

int write_block(const char* name, void* block) {
    if (letter == 0) return 0;
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

int write_client_text(const char*, char* text) {
    return fill(text, 8), 1;
}

int write_chipset(int, int, char* name, int) {
    if (letter != 0) strcpy(name, letter == 'x' ? "mt7615" : "other");
    return 1;
}

int write_conf(wireless_conf* conf, const char*) {
    return fill(conf, sizeof *conf);
}

int write_port(int, void* setting) {
    auto& port = *static_cast<port_setting*>(setting);
    if (letter != 0) strcpy(port.speed, letter == 'x' ? "100" : "10"), strcpy(port.duplex, "full");
    return 7;
}

int write_silence(void* record, int unit) {
    return unit == 1 ? fill(record, sizeof(uint32_t)) : 0;
}

class HostAnswers : public harness::SampleRadios {
protected:
    HostAnswers() {
        letter = 'x';
        devices = 0;
        record(0).apcli_enable = record(0).apcli_wan = 1;
    }

    // What calls that ask the host for much do and answer, on the board as it is now.
    std::string effects() {
        const board::State kept = host();
        ship_profiles();
        write(harness::kPinPath, "");
        clear_journal();
        devices = 1;
        const wps_start_request push_button = {};
        char operation[32];
        channel_spec spec = {};
        std::string results;
        for (const int result :
             {platform_init_wireless(), platform_set_wireless(nullptr, "rai0"), init_portconfig(),
              wireless_restart_8021xd(), wireless_restart_bandstrg(), wireless_prepare_wps(nullptr),
              wireless_wps_start(nullptr, &push_button), wireless_wps_stop(nullptr),
              wireless_get_wps_status("ra0", nullptr), wireless_apply_macauth(1),
              wireless_api_get_current_channelspec("ra0", &spec), check_diag_flag(),
              rt61_get_wireless_link_speed("apcli0"), platform_run_led_control(1),
              get_run_led_op(operation), get_run_led_state(), init_sniff_port(),
              platform_wireless_api_apply_mbssid(0), reinit_vlan()})
            results += std::to_string(result) + ' ';
        results +=
            operation + std::to_string(spec.channel) + ' ' + std::to_string(spec.ext_channel);
        results += std::string(host().radios[0].bss[0].ssid, 128) + read(harness::kPinPath);
        host() = kept;
        return journal_text() + read(harness::kProfilePath[0]) + read(harness::kProfilePath[1]) +
               results;
    }

private:
    const LibraryHook block_{"get_si", write_block};
    const LibraryHook address_{"get_lan_ipconfig", write_address};
    const LibraryHook wan_type_{"get_wan_type", write_wan_type};
    const LibraryHook status_{"istatus_get_value_direct", write_status};
    const LibraryHook value_{"genconfig_get_value_direct", write_value};
    const LibraryHook element_{"easymesh_get_kdx_ie", write_element};
    const LibraryHook device_{"easymesh_make_wsc_kdx_type_str", write_device};
    const LibraryHook essid_{"iwconfig_client_get_essid", write_client_text};
    const LibraryHook ap_mac_{"iwconfig_client_get_ap_mac", write_client_text};
    const LibraryHook chipset_{"getsi_wifi_chipset_name", write_chipset};
    const LibraryHook conf_{"read_wireless_conf", write_conf};
    const LibraryHook port_{"read_portconfig", write_port};
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

// The device name is asked anew for each radio.
TEST_F(HostAnswers, OfOneRadioAreNotThoseOfTheNext) {
    wsc_profile_update();
    expect_keys(0, {"WscDeviceName=" + std::string(127, 'x')});
    expect_keys(1, {"WscDeviceName="});
}

TEST_F(HostAnswers, ThatAreNotWrittenAreNotThoseOfAnEarlierCall) {
    std::string unwritten[2];
    for (const bool second : {false, true}) {
        letter = second ? 'y' : 'x';
        host().hw.run_led_gpio = letter;
        const std::string written = effects();
        letter = 0;
        unwritten[second] = effects();
        EXPECT_NE(written, unwritten[second]);
    }
    EXPECT_EQ(unwritten[0], unwritten[1]);
}

TEST_F(HostAnswers, AreAYesWithAnyNumberBut0) {
    static int yes;
    std::vector<std::unique_ptr<LibraryHook>> hooks;
    for (const char* question :
         {"get_igmp_proxy", "easymesh_enabled", "wireless_check_8021x_enabled",
          "wireless_check_8021x_enabled2", "wireless_check_8021x_enable_for_band",
          "is_default_config", "get_ifexist", "get_ifstatus", "check_wireless_ifstatus",
          "file_exists", "wireless_check_channel_valid", "macauth_get_policy", "get_sniff_port"})
        hooks.push_back(std::make_unique<LibraryHook>(
            question, +[] { return yes; }));
    const LibraryHook steering(
        "get_band_steering_running", +[](int unit) { return unit == 0 ? yes : 0; });
    const auto effects_of = [this](int answer) {
        yes = answer;
        return effects();
    };
    effects_of(0);
    const std::string of_1 = effects_of(1);
    EXPECT_NE(effects_of(0), of_1);
    for (const int other : {2, 256, -1, INT_MIN}) EXPECT_EQ(of_1, effects_of(other)) << other;
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
