// The BSS that the factory default offers for the set-up.
#include <cstring>

#include "profile/sample_radios.h"

namespace {

// Every byte of a record is someone's: a copy is a copy of all of them.
class HelperBss : public harness::SampleRadios {
protected:
    HelperBss() {
        for (int i = 0; i < 6; ++i) memset(records_ + i, 0xA0 + i, sizeof *records_);
        memcpy(expected_, records_, sizeof records_);
    }
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
    void TearDown() override {
        EXPECT_EQ(0, memcmp(expected_, records_, sizeof records_));
        SampleRadios::TearDown();
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
    EXPECT_EQ(0, memcmp(expected_, records_, sizeof records_));
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
