#include <cstring>

#include "platform/flash.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr uint8_t kBase[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0xFE};
constexpr const char* kReadBase = "/sbin/uboot_env -g ethaddr";

class Hwaddr : public harness::Board {
protected:
    Hwaddr() { answer(kReadBase, "00:11:22:33:44:fe\n"); }

    static std::string address_of(const char* ifname) {
        char text[20];
        memset(text, 'x', sizeof text);
        EXPECT_EQ(1, get_hwaddr_flash(ifname, text));
        EXPECT_EQ(std::string_view("\0xx", 3), std::string_view(text + 17, 3));
        return text;
    }
};

TEST_F(Hwaddr, AnOffsetIsAddedToTheLastByteWithoutCarry) {
    const struct {
        const char* ifname;
        const char* address;
        const char* fallback;  // when the tool cannot start
    } kRows[] = {
        {"eth0",  "00:11:22:33:44:01", "00:9F:33:00:11:23"},
        {"ra0",   "00:11:22:33:44:00", "00:9F:33:00:11:22"},
        {"rai0",  "00:11:22:33:44:05", "00:9F:33:00:11:27"},
        {"eth1",  "00:11:22:33:44:FF", "00:9F:33:00:11:21"},
        {nullptr, "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
        {"",      "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
        {"eth00", "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
        {"eth",   "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
        {"ETH0",  "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(row.address, address_of(row.ifname));
        fail_nth("popen", 1);
        EXPECT_EQ(row.fallback, address_of(row.ifname));
    }
    EXPECT_EQ(Lines(std::size(kRows), std::string("$< ") + kReadBase), journal());
}

TEST_F(Hwaddr, RawWritesSixBytes) {
    uint8_t mac[8];
    memset(mac, 0xA5, sizeof mac);
    EXPECT_EQ(1, get_hwaddr_flash_raw("ra0", mac));
    const uint8_t expected[8] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x00, 0xA5, 0xA5};
    EXPECT_EQ(0, memcmp(expected, mac, sizeof mac));
}

// What a text that is no address becomes is the host's: ours reads it as zeroes.
TEST_F(Hwaddr, TheBaseIsReadFrom31CharactersAndNeverStale) {
    const std::pair<std::string, const char*> kRows[] = {
        {"00:11:22:33:44:55" + std::string(14, ' ') + "x\n", "00:11:22:33:44:55"},
        {"00:11:22:33:44:55" + std::string(13,                                    ' ') + "x\n",             "00:00:00:00:00:00"},
        {"",                 "00:00:00:00:00:00"                },
    };
    for (const auto& [output, address] : kRows) {
        answer(kReadBase, output);
        EXPECT_EQ(address, address_of(nullptr));
    }
}

TEST_F(Hwaddr, NothingIsDoneWithoutAnAddressOrAnInterface) {
    EXPECT_EQ(1, get_hwaddr_flash_raw("ra0", nullptr));
    EXPECT_EQ(1, get_hwaddr_flash("ra0", nullptr));
    EXPECT_EQ(1, set_hwaddr_flash_raw(nullptr));
    EXPECT_EQ(1, set_hwaddr_flash(nullptr));
    EXPECT_EQ(0, mt762x_update_wl_eeprom(nullptr));
    EXPECT_EQ(0, mt762x_set_eeprom_mac("ra0", nullptr));
    EXPECT_EQ(0, mt762x_set_eeprom_mac(nullptr, kBase));
    EXPECT_EQ(0, mt762x_set_eeprom_mac(std::string(256, 'r').c_str(), kBase));
    EXPECT_EQ(Lines{}, journal());
}

// The second radio's address is two above the base in its last byte, without carry.
const Lines kBothRadios = {"$2 iwpriv ra0 e2p 4=1100",  "$2 iwpriv ra0 e2p 6=3322",
                           "$2 iwpriv ra0 e2p 8=fe44",  "$2 ated -ira0 -c\"sync eeprom all\"",
                           "$2 iwpriv rai0 e2p 4=1100", "$2 iwpriv rai0 e2p 6=3322",
                           "$2 iwpriv rai0 e2p 8=0044", "$2 ated -irai0 -c\"sync eeprom all\""};

TEST_F(Hwaddr, SettingStoresTheBaseAndThenBothRadios) {
    Lines expected = {"$ /sbin/uboot_env -s ethaddr=00:11:22:33:44:fe | /sbin/mtd write - Config"};
    expected.insert(expected.end(), kBothRadios.begin(), kBothRadios.end());
    EXPECT_EQ(1, set_hwaddr_flash("00:11:22:33:44:FE"));
    EXPECT_EQ(expected, journal());
    clear_journal();
    EXPECT_EQ(1, set_hwaddr_flash_raw(kBase));
    EXPECT_EQ(expected, journal());
}

TEST_F(Hwaddr, UpdatingTheRadiosGoesOnWhenACommandFails) {
    on_command = [](const std::string&) { return 1; };
    EXPECT_EQ(0, mt762x_update_wl_eeprom(kBase));
    EXPECT_EQ(kBothRadios, journal());
}

TEST_F(Hwaddr, AnInterfaceNameIsCutTo31CharactersAndEscapedForTheShell) {
    const std::string name = "a;" + std::string(29, 'b');
    write_l1profile("INDEX0_main_ifname=" + name + "b\nINDEX1_main_ifname=c\n");
    mt762x_update_wl_eeprom(kBase);
    EXPECT_EQ("$2 iwpriv '" + name + "' e2p 4=1100", journal().at(0));
    EXPECT_EQ("$2 ated -i'" + name + "' -c\"sync eeprom all\"", journal().at(3));
    EXPECT_EQ("$2 iwpriv c e2p 4=1100", journal().at(4));
}

}  // namespace
