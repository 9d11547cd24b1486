// The MAC access control in the profile.
#include "frame/host.h"
#include "profile/sample_radios.h"
#include "support/library_hook.h"

namespace {

class AccessKeys : public harness::SampleRadios {
protected:
    void filter(size_t count) {
        std::vector<mac_filter_entry> entries(count, board::filter_entry("00:1a:ff:00:00:00"));
        for (size_t i = 0; i < count; ++i) entries[i].mac[5] = uint8_t(i);
        host().mac_filters[0].entries = entries;
        host().max_mac_filter = 500;
    }
    static std::string list(size_t count) {
        std::string text = "AccessControlList0=";
        for (size_t i = 0; i < count; ++i) {
            char address[20];
            std::snprintf(address, sizeof address, "00:1A:FF:00:00:%02X;", unsigned(i % 256));
            text += address;
        }
        return text;
    }
};

TEST_F(AccessKeys, ListIsCutAfter227Addresses) {
    const std::string overflow = "syslog 1 \"Error:MAC Buf Overflow : 4086\"\n";
    for (const size_t count : {0u, 226u, 227u, 228u}) {
        filter(count);
        clear_journal();
        apply(0);
        expect_keys(0, {list(std::min(count, size_t{227}))});
        EXPECT_EQ(count < 227 ? "" : overflow, journal_text("syslog"));
    }
}

TEST_F(AccessKeys, AskForNoMoreThanTheHostAllows) {
    filter(9);
    host().max_mac_filter = 5;
    host().mac_filters[0].entries[0].inactive = -1;
    host().mac_filters[0].policy = 3;
    apply(0);
    expect_keys(0, {"AccessControlList0=" + list(5).substr(19 + 18), "AccessPolicy0=0"});
}

// The second radio ships with AccessPolicy0=7 and an address of BSS 1.
TEST_F(AccessKeys, WithoutMemoryStayForThatBssAlone) {
    radio(1).bss_count = 3;
    fail_nth("malloc", 2);
    apply(1);
    EXPECT_EQ("syslog 1 \"mtk_macauth_profile_update: malloc failed\\n\"\n",
              journal_text("syslog"));
    expect_keys(1,
                {"AccessControlList0=", "AccessPolicy0=0", "AccessControlList1=00:00:00:00:00:01;",
                 "AccessPolicy1", "AccessControlList2=", "AccessPolicy2=0"});
}

TEST_F(AccessKeys, WithoutATableAreEmpty) {
    const auto no_table = +[](uint32_t, int) -> mac_filter_table* { return nullptr; };
    const harness::LibraryHook hook("macdb_read", no_table);
    radio(1).bss_count = 2;
    host().mac_filters[0x10001].policy = 1;
    apply(1);
    expect_keys(1, {"AccessControlList1=", "AccessPolicy1=2"});
}

}  // namespace
