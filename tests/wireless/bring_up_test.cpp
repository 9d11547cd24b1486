// The start of the board and the apply of a radio, as whole journals.
#include <cstring>

#include "frame/host.h"
#include "live/interfaces.h"
#include "platform/wlmap.h"
#include "profile/sample_radios.h"
#include "support/library_hook.h"
#include "support/rows.h"

namespace {

constexpr const char* kSnooping = "/sys/devices/virtual/net/br0/bridge/multicast_snooping";

class Start : public harness::SampleRadios {
protected:
    Start() {
        host() = board::factory_state();
        write(kSnooping, "1\n");
    }
};

TEST_F(Start, OfTheFactoryDefaultReportsAMissingInterfaceAndGoesOn) {
    remove("/sys/class/net/rai0");
    EXPECT_EQ(0, platform_init_wireless());
    EXPECT_EQ(golden("start.journal"), journal_text());
    EXPECT_EQ(golden("start.err"), err());
    const std::string frame = std::string(67, '*') + '\n';
    EXPECT_EQ("Bridge Init\n" + frame + "*** ERROR Wireless Interface (rai0) is not FOUND  " +
                  std::string(21, '*') + '\n' + frame,
              out());
}

TEST_F(Start, WithoutRadiosAndSnoopingMakesTheBridgeAlone) {
    remove(kSnooping);
    host().wl_modes = {};
    host().hw.tpc_2g.enable = host().hw.tpc_5g.enable = 0;
    host().almac = "00:9F'; reboot; $(reboot)";
    EXPECT_EQ(0, platform_init_wireless());
    EXPECT_EQ("Bridge Init\n", out());
    EXPECT_EQ(
        "$ /sbin/brctl addbr br0\n$ /sbin/brctl stp br0 off\n$ /sbin/brctl setfd br0 0\n"
        "$ /sbin/brctl addif br0 eth0\n"
        "$2 ifconfig br0 hw ether '00:9F'\\''; reboot; $(reboot)'\nifup br0\n",
        journal_text());
}

TEST_F(Start, HelpsOnTheFirstRadioOfTheFactoryDefaultOnly) {
    for (const auto& [wl_mode, default_config, factory_test, key] :
         harness::rows<int32_t, int, bool, std::string>(
             "0 1 0 SSID3=setup-helper  1 1 0 SSID3  0 0 0 SSID3  0 1 1 SSID3")) {
        ship_profiles();
        host().default_config = default_config;
        if (factory_test) write("/tmp/factory_default_mode", "on");
        EXPECT_EQ(0, init_mtk_wlif(wl_mode));
        expect_keys(wl_mode, {key});
    }
    err();
}

class Apply : public harness::SampleRadios {};

// Of three BSSs the second is off. The host writes the channel into a record of the library's.
TEST_F(Apply, OfARecordWithAnAutomaticChannel) {
    radio(0).bss_count = 3;
    record(0, 1).enabled = 0;
    wireless_conf conf = record(0);
    record(0).enabled = 0;  // the stored record does not count
    conf.channel = 0;
    conf.bandwidth = 40;
    harness::put_text(conf.country_code, "JP");
    radio(0).best_channel = {11, 7, 2462, 0, 40};
    board::set_interface_up("ra0", true);
    const wireless_conf given = conf;
    const auto stored = radio(0).bss;
    EXPECT_EQ(0, platform_set_wireless(&conf, "ra0"));
    EXPECT_EQ(golden("apply_record.journal"), journal_text());
    EXPECT_EQ("WL_MODE: 0 Profile Name : /etc/wireless/radio0.dat\nTx Power for Channel 11 -> 60\n",
              err());
    expect_keys(0, {"Channel=11", "HT_EXTCHA=0;0;0;0", "AutoChannelSelect=0", "CountryRegion=5"});
    EXPECT_EQ(0, memcmp(&given, &conf, sizeof conf));
    EXPECT_EQ(0, memcmp(&stored, &radio(0).bss, sizeof stored));
}

// Named by a text of the library's own, which the next lookup changes.
TEST_F(Apply, OfTheStoredRecords) {
    radio(1).bss_count = 2;
    EXPECT_EQ(0, platform_set_wireless(nullptr, get_wl_ifname(0x10000)));
    EXPECT_EQ("WL_MODE: 1 Profile Name : /etc/wireless/radio1.dat\nTx Power for Channel 40 -> 60\n",
              err());
    EXPECT_EQ(golden("apply_stored.journal"), journal_text());
}

TEST_F(Apply, OfHostileNamesRunsNothingElse) {
    EXPECT_EQ(0, platform_set_wireless(&record(0), nullptr));
    EXPECT_EQ("", journal_text());
    write_l1profile("INDEX0_main_ifname=ra0\nINDEX0_ext_ifname=`id` \nINDEX0_apcli_ifname=a&b\n");
    platform_set_wireless(&record(0), "ra0;reboot");
    std::string lines;
    for (const char* name : {"'`id` 0'", "'`id` 1'", "'`id` 2'", "'`id` 3'", "'a&b0'"})
        lines += std::string("$2 /sbin/brctl delif br0 ") + name + '\n';
    EXPECT_EQ(lines +
                  "$2 /sbin/iwpriv 'ra0;reboot' set EntryLifeCheck=64\n"
                  "$2 /sbin/iptables -t nat -D POSTROUTING -o  -j MASQUERADE\n",
              journal_text("$"));
    err();
}

// The host says how many BSSs there are, and has filled none: each goes down once more.
TEST_F(Apply, WorksOnFourBssAtMost) {
    static int said;
    const auto count = +[](const char*, wireless_conf*, int max) { return max == 4 ? said : 1; };
    const harness::LibraryHook hook("read_all_mbss_conf", count);
    for (const auto& [number, bss, flags] : harness::rows<int, size_t, std::string>(
             "0 0 =  1 1 =1  4 4 =1;1;1;1;  5 4 =1;1;1;1;  2147483647 4 =1;1;1;1;  -1 0 =")) {
        said = number;
        clear_journal();
        wireless_conf off{};
        off.channel = 1;
        EXPECT_EQ(0, platform_set_wireless(&off, "ra0"));
        expect_keys(0, {"HideSSID" + flags});
        EXPECT_EQ(5 + bss + 1, commands().size()) << number;
    }
    err();
}

}  // namespace
