// The start of the board and the apply of a radio, as whole journals, and their steps.
#include <cstring>

#include "board/model/interfaces.h"
#include "platform/wlmap.h"
#include "src/host/host.h"
#include "tests/profile/sample_radios.h"
#include "tests/support/library_hook.h"
#include "tests/support/rows.h"

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
}

TEST_F(Start, WithoutRadiosAndSnoopingMakesTheBridgeAlone) {
    remove(kSnooping);
    host().wl_modes = {};
    host().hw.tpc_2g.enable = host().hw.tpc_5g.enable = 0;
    host().almac = "00:9F";
    EXPECT_EQ(0, platform_init_wireless());
    EXPECT_EQ(
        "out Bridge Init\n$ /sbin/brctl addbr br0\n$ /sbin/brctl stp br0 off\n"
        "$ /sbin/brctl setfd br0 0\n$ /sbin/brctl addif br0 eth0\n"
        "$2 ifconfig br0 hw ether 00:9F\nifup br0\n",
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
    expect_keys(0, {"Channel=11", "HT_EXTCHA=0;0;0;0", "AutoChannelSelect=0", "CountryRegion=5"});
    EXPECT_EQ(0, memcmp(&given, &conf, sizeof conf));
    EXPECT_EQ(0, memcmp(&stored, &radio(0).bss, sizeof stored));
}

// Named by a text of the library's own, which the next lookup changes.
TEST_F(Apply, OfTheStoredRecords) {
    radio(1).bss_count = 2;
    EXPECT_EQ(0, platform_set_wireless(&record(0), nullptr));  // does nothing
    EXPECT_EQ(0, platform_set_wireless(nullptr, get_wl_ifname(0x10000)));
    EXPECT_EQ(golden("apply_stored.journal"), journal_text());
}

// The host says how many BSSs there are, and has filled none: each goes down once more.
TEST_F(Apply, WorksOnFourBssAtMost) {
    static int said;
    const auto count = +[](const char*, wireless_conf*, int max) { return max == 4 ? said : 1; };
    const harness::LibraryHook hook(HOST_HOOK(read_all_mbss_conf, count));
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

class Tpc : public harness::SampleRadios {};

TEST_F(Tpc, IsHandedToTheRadioWhereItIsEnabled) {
    const std::string set = "$2 /sbin/iwpriv rai0 set tpc";
    const std::string full(128, '7');
    host().hw.tpc_2g.enable = 0;
    harness::put_text(host().hw.tpc_5g.value, full);
    for (const std::string& duty : {full, std::string(128, '\'')}) {
        clear_journal();
        harness::put_text(host().hw.tpc_5g.duty, duty);
        EXPECT_EQ(0, mtk_tpc_patch());
        const std::string first = duty == full ? set + "_duty=" + full + '\n' : "";  // too long
        const std::string report = "err MTK TPC FOR 5G : " + duty + " / " + full + '\n';
        EXPECT_EQ(report + first + set + '=' + full + '\n', journal_text());
    }
}

constexpr const char* kStatus = "/var/run/scan_status";
const std::string kPoll = "$ /sbin/iwpriv ra0 get_scan_status > /var/run/scan_status\n";

// The automatic channel and the wait for its scan.
class AutomaticChannel : public harness::SampleRadios {
protected:
    AutomaticChannel() {
        record(0).channel = 0;
        board::set_interface_up("ra0", true);
    }
    // The journal of an apply up to the profile.
    std::string selection() {
        apply(0);
        const std::string text = journal_text();
        return text.substr(0, text.find("err WL_MODE"));
    }
    static std::string polls(int running, bool ended) {
        std::string lines = "best_channel ra0 US 20\n";
        for (int i = 0; i < running; ++i) lines += kPoll + "sleep 1\n";
        return ended ? lines + kPoll : lines;
    }
};

TEST_F(AutomaticChannel, WaitsForTheEndOfTheScan) {
    EXPECT_EQ(polls(0, true), selection());  // without a status
    const std::string x61(61, 'x');
    for (const std::string& status :
         harness::Lines{"", "0", "0\n", "ra0 scan:0\r\n", x61 + ":0", x61 + ":01", "\n"}) {
        write(kStatus, status);
        EXPECT_EQ(polls(0, true), selection()) << status;
    }
    for (const char* status : {"1", "x:1", "x:", "x: 0", "00", "x:y:0", "0:1"}) {
        write(kStatus, status);
        EXPECT_EQ(polls(10, false), selection()) << status;
    }
    int poll = 0;
    on_command = [&](const std::string& command) {
        if ("$ " + command + '\n' == kPoll) write(kStatus, ++poll < 10 ? "x:1\n" : "x:0\n");
        return 1;
    };
    EXPECT_EQ(polls(9, true), selection());
}

TEST_F(AutomaticChannel, LeavesADownInterfaceDown) {
    board::set_interface_up("ra0", false);
    harness::put_text(record(0).country_code, "ABCDEFGH");
    EXPECT_EQ("ifup ra0\nbest_channel ra0 ABCDEFGH 20\n" + kPoll + "ifdown ra0\n", selection());
}

// The BSS that the factory default offers for the set-up. Every byte of a record is someone's: a
// copy is a copy of all of them.
class HelperBss : public harness::SampleRadios {
protected:
    HelperBss() {
        for (int i = 0; i < 6; ++i) memset(records_ + i, 0xA0 + i, sizeof *records_);
        memcpy(expected_, records_, sizeof records_);
    }
    ~HelperBss() override { EXPECT_EQ(0, memcmp(expected_, records_, sizeof records_)); }
    // The key is null for an open BSS, which keeps the key of record 0.
    void expect_copy(int index, const std::string& ssid, const char* key, int broadcast) {
        wireless_conf& bss = expected_[index];
        bss = expected_[0];
        bss.enabled = 1;
        memcpy(bss.ssid, ssid.c_str(), ssid.size() + 1);
        bss.no_forwarding = 0;
        bss.ssid_broadcast = broadcast;
        bss.auth_mode = key != nullptr ? 5 : 1;
        bss.encryption = key != nullptr ? 4 : 0;
        if (key != nullptr) memcpy(bss.wpa_psk, key, strlen(key) + 1);
        bss.bss_index = index;
    }
    static void fill_name(size_t size) { memset(&host().sw[SW_INFO_HELPER_SSID], 'h', size); }

    wireless_conf records_[6];
    wireless_conf expected_[6];
};

TEST_F(HelperBss, IsOpenOrHiddenAsItsEntrySays) {
    board::set_helper_bss(host(), 0, {"open", false, "unused", true});
    board::set_helper_bss(host(), 1, {"second", true, "key", false});
    EXPECT_EQ(4, set_quolex_helper_bss(records_, 2));
    expect_copy(2, "open", nullptr, 0);
    expect_copy(3, "second", "key", 1);
}

TEST_F(HelperBss, IsACopyOfTheFirstOrLeftOutWithoutRoom) {
    board::set_helper_bss(host(), 1, {"second", true, "key", false});
    EXPECT_EQ(4, set_quolex_helper_bss(records_, 4));
    EXPECT_EQ(4, set_quolex_helper_bss(records_, 3));
    expect_copy(3, "setup-helper", "setup-passphrase", 1);
}

// From its 65th character on, a name lies over the secured flag and then the key.
TEST_F(HelperBss, NameMayRunIntoItsNeighbours) {
    host().sw.fill('\0');
    fill_name(64);
    EXPECT_EQ(2, set_quolex_helper_bss(records_, 1));
    expect_copy(1, std::string(64, 'h'), nullptr, 1);
    fill_name(66);
    EXPECT_EQ(3, set_quolex_helper_bss(records_, 2));
    expect_copy(2, std::string(66, 'h'), "", 1);
    fill_name(200);
    EXPECT_EQ(4, set_quolex_helper_bss(records_, 3));
    expect_copy(3, std::string(127, 'h'), std::string(107, 'h').c_str(), 1);
}

}  // namespace
