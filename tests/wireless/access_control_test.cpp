// MAC access control at run time: into the driver and into the profile.
#include "live/journal.h"
#include "platform/wireless.h"
#include "profile/sample_radios.h"
#include "support/library_hook.h"

namespace {

using harness::Lines;

class AccessControl : public harness::SampleRadios {
protected:
    AccessControl() { host().journal_profile_edits = true; }
};

TEST_F(AccessControl, SetsTheDriversWordForAPolicy) {
    const struct {
        uint32_t wl_index;
        int policy;
        Lines journal;
    } kRows[] = {
        {0x10002,
         1, {"$ /sbin/iwpriv rai2 set AccessPolicy=2",
          "profile /etc/wireless/radio1.dat store AccessPolicy2=2"}},
        {0x00000,
         2, {"$ /sbin/iwpriv ra0 set AccessPolicy=1",
          "profile /etc/wireless/radio0.dat store AccessPolicy0=1"}},
        {0x00003,
         0, {"$ /sbin/iwpriv ra3 set AccessPolicy=0",
          "profile /etc/wireless/radio0.dat store AccessPolicy3=0"}},
        {0x00001,
         5, {"$ /sbin/iwpriv ra1 set AccessPolicy=0",
          "profile /etc/wireless/radio0.dat store AccessPolicy1=0"}},
    };
    for (const auto& row : kRows) {
        clear_journal();
        EXPECT_EQ(0, wireless_macauth_set_policy(row.wl_index, row.policy));
        EXPECT_EQ(row.journal, journal());
    }
}

class AddressList : public AccessControl {
protected:
    AddressList() { radio(1).bss_count = 2; }
    // The whole journal of an apply to rai1.
    static Lines applied(const std::string& list, const Lines& rest = {}) {
        Lines lines = {
            "$2 /sbin/iwpriv rai1 set ACLClearAll=1",
            "$2 /sbin/iwpriv rai1 set ACLAddEntry=\"" + list + '"',
            "profile /etc/wireless/radio1.dat store " + board::quote("AccessControlList1=" + list)};
        lines.insert(lines.end(), rest.begin(), rest.end());
        return lines;
    }
    Lines apply_list(uint32_t wl_index = 0x10001) {
        clear_journal();
        EXPECT_EQ(0, wireless_apply_macauth(wl_index));
        return journal();
    }
    static board::MacFilter& filter() { return host().mac_filters[0x10001]; }
};

TEST_F(AddressList, ReplacesTheDriversAndTheProfiles) {
    filter().entries.clear();
    EXPECT_EQ(applied(""), apply_list());
    filter().entries = {board::filter_entry("00:1a:ff:00:00:01"),
                        board::filter_entry("00:1a:ff:00:00:02"),
                        board::filter_entry("00:1a:ff:00:00:03")};
    filter().entries[1].inactive = 1;
    EXPECT_EQ(applied("00:1A:FF:00:00:01;00:1A:FF:00:00:03;"), apply_list());
}

TEST_F(AddressList, IsCutWithAMessageAndStillGoesIntoOneCommand) {
    host().max_mac_filter = 500;
    filter().entries.assign(500, board::filter_entry("00:00:00:00:00:00"));
    std::string full;
    for (int i = 0; i < 227; ++i) full += "00:00:00:00:00:00;";
    Lines lines = applied(full);
    lines.insert(lines.begin() + 1, "syslog 1 \"Error:MAC Buf Overflow : 4086\"");
    EXPECT_EQ(lines, apply_list());
}

TEST_F(AddressList, WithoutMemoryIsClearedInTheDriverAlone) {
    fail_nth("malloc", 1);
    EXPECT_EQ(Lines{"$2 /sbin/iwpriv rai1 set ACLClearAll=1"}, apply_list());
}

TEST_F(AddressList, TellsTheWanOfAn8021xBssWithAPolicy) {
    const std::tuple<int32_t, int, bool> kRows[] = {
        {WIRELESS_AUTH_WPA2,    1, true },
        {WIRELESS_AUTH_WPA2,    0, false},
        {WIRELESS_AUTH_WPA2PSK, 1, false},
    };
    for (const auto& [auth_mode, policy, told] : kRows) {
        record(1, 1).auth_mode = auth_mode;
        filter().policy = policy;
        EXPECT_EQ(applied("", told ? Lines{"signal_wan"} : Lines{}), apply_list());
    }
    record(1, 1).auth_mode = WIRELESS_AUTH_WPA2;
    filter().policy = 1;
    radio(1).bss_count = 1;  // no longer configured, and not asked about
    const harness::LibraryHook hook(
        "wireless_check_8021x_enabled", +[](const wireless_conf*) { return 1; });
    EXPECT_EQ(applied(""), apply_list());
}

TEST_F(AccessControl, KicksNobody) {
    EXPECT_EQ(0, wireless_macauth_kickall());
    EXPECT_EQ(0, wireless_macauth_kickmac());
    EXPECT_EQ(Lines{}, journal());
}

}  // namespace
