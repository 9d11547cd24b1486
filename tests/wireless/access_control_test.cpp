// MAC access control at run time: into the driver and into the profile.
#include "live/journal.h"
#include "platform/wireless.h"
#include "profile/sample_radios.h"
#include "support/library_hook.h"
#include "support/rows.h"

namespace {

class AccessControl : public harness::SampleRadios {
protected:
    AccessControl() {
        host().journal_profile_edits = true;
        radio(1).bss_count = 2;
    }
    // The whole journal of an apply to rai1.
    void expect_applied(const std::string& list, const std::string& last = "",
                        const std::string& message = "") {
        clear_journal();
        EXPECT_EQ(0, wireless_apply_macauth(0x10001));
        EXPECT_EQ("$2 /sbin/iwpriv rai1 set ACLClearAll=1\n" + message +
                      "$2 /sbin/iwpriv rai1 set ACLAddEntry=\"" + list +
                      "\"\nprofile /etc/wireless/radio1.dat store " +
                      board::quote("AccessControlList1=" + list) + '\n' + last,
                  journal_text());
    }
    board::MacFilter& filter = host().mac_filters[0x10001];
};

TEST_F(AccessControl, SetsTheDriversWordForAPolicy) {
    for (const auto& [radio, bss, policy, ifname, word] :
         harness::rows<uint32_t, uint32_t, int, std::string, std::string>(
             "1 2 1 rai2 2  0 0 2 ra0 1  0 3 0 ra3 0  0 1 5 ra1 0")) {
        clear_journal();
        EXPECT_EQ(0, wireless_macauth_set_policy(radio << 16 | bss, policy));
        EXPECT_EQ("$ /sbin/iwpriv " + ifname + " set AccessPolicy=" + word +
                      "\nprofile /etc/wireless/radio" + std::to_string(radio) +
                      ".dat store AccessPolicy" + std::to_string(bss) + '=' + word + '\n',
                  journal_text());
    }
}

TEST_F(AccessControl, ReplacesTheListsOfTheDriverAndTheProfile) {
    fail_nth("malloc", 1);
    EXPECT_EQ(0, wireless_apply_macauth(0x10001));
    EXPECT_EQ("$2 /sbin/iwpriv rai1 set ACLClearAll=1\n", journal_text());
    filter.entries.clear();
    expect_applied("");
    filter.entries = {board::filter_entry("00:1a:ff:00:00:01"),
                      board::filter_entry("00:1a:ff:00:00:02"),
                      board::filter_entry("00:1a:ff:00:00:03")};
    filter.entries[1].inactive = 1;
    expect_applied("00:1A:FF:00:00:01;00:1A:FF:00:00:03;");
    host().max_mac_filter = 500;  // cut, the list still fits into one command
    filter.entries.assign(500, board::filter_entry("00:00:00:00:00:00"));
    std::string full;
    for (int i = 0; i < 227; ++i) full += "00:00:00:00:00:00;";
    expect_applied(full, "", "syslog 1 \"Error:MAC Buf Overflow : 4086\"\n");
}

TEST_F(AccessControl, TellsTheWanOfAn8021xBssWithAPolicy) {
    for (const auto& [auth_mode, policy, told] : {
             std::tuple(WIRELESS_AUTH_WPA2PSK, 1, ""),
             {WIRELESS_AUTH_WPA2, 0, ""            },
             {WIRELESS_AUTH_WPA2, 1, "signal_wan\n"}
    }) {
        record(1, 1).auth_mode = auth_mode;
        filter.policy = policy;
        expect_applied("", told);
    }
    radio(1).bss_count = 1;  // no longer configured, and not asked about
    const harness::LibraryHook hook(
        "wireless_check_8021x_enabled", +[](const wireless_conf*) { return 1; });
    expect_applied("");
}

}  // namespace
