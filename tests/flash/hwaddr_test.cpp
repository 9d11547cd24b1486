#include <cstring>

#include "platform/flash.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr const char* kReadBase = "/sbin/uboot_env -g ethaddr";
constexpr uint8_t kBase[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0xFE};

struct Offset {
    const char* name;
    const char* ifname;
    const char* address;   // with the base 00:11:22:33:44:fe
    const char* fallback;  // when the tool cannot start
};
void PrintTo(const Offset& row, std::ostream* os) {
    *os << row.name;
}

class Hwaddr : public harness::Board {
protected:
    Hwaddr() { answer(kReadBase, "00:11:22:33:44:fe\n"); }

    // The address as text; also checks that both forms agree and write no byte too many.
    static std::string address_of(const char* ifname) {
        char text[20];
        memset(text, 'x', sizeof text);
        EXPECT_EQ(1, get_hwaddr_flash(ifname, text));
        EXPECT_EQ(std::string_view("\0xx", 3), std::string_view(text + 17, 3));
        return text;
    }
};
class HwaddrOffset : public Hwaddr, public testing::WithParamInterface<Offset> {};

TEST_P(HwaddrOffset, IsAddedToTheLastByteWithoutCarry) {
    EXPECT_EQ(GetParam().address, address_of(GetParam().ifname));
    EXPECT_EQ(Lines{std::string("$< ") + kReadBase}, journal());
}

TEST_P(HwaddrOffset, IsAddedToTheFallbackWhenTheToolCannotStart) {
    fail_next("popen");
    EXPECT_EQ(GetParam().fallback, address_of(GetParam().ifname));
    EXPECT_EQ(Lines{}, journal());
}

INSTANTIATE_TEST_SUITE_P(, HwaddrOffset,
                         testing::ValuesIn(std::initializer_list<Offset>{
                             {"Eth0",        "eth0",  "00:11:22:33:44:01", "00:9F:33:00:11:23"},
                             {"Ra0",         "ra0",   "00:11:22:33:44:00", "00:9F:33:00:11:22"},
                             {"Rai0",        "rai0",  "00:11:22:33:44:05", "00:9F:33:00:11:27"},
                             {"Eth1",        "eth1",  "00:11:22:33:44:FF", "00:9F:33:00:11:21"},
                             {"NoName",      nullptr, "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
                             {"Empty",       "",      "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
                             {"OtherName",   "br0",   "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
                             {"LongerName",  "eth00", "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
                             {"ShorterName", "eth",   "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
                             {"OtherCase",   "ETH0",  "00:11:22:33:44:FE", "00:9F:33:00:11:20"},
}),
                         harness::CaseName());

TEST_F(Hwaddr, RawWritesSixBytes) {
    uint8_t mac[8];
    memset(mac, 0xA5, sizeof mac);
    EXPECT_EQ(1, get_hwaddr_flash_raw("ra0", mac));
    const uint8_t expected[8] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x00, 0xA5, 0xA5};
    EXPECT_EQ(0, memcmp(expected, mac, sizeof mac));
}

// What a text that is no address becomes is the host's: ours reads it as zeroes.
TEST_F(Hwaddr, AnUnsetBaseHoldsNoStaleBytes) {
    address_of(nullptr);
    answer(kReadBase, "");
    EXPECT_EQ("00:00:00:00:00:02", address_of("ra0"));
}

TEST_F(Hwaddr, TheBaseIsReadFrom31Characters) {
    answer(kReadBase, "00:11:22:33:44:55" + std::string(14, ' ') + "x\n");
    EXPECT_EQ("00:11:22:33:44:55", address_of(nullptr));
    answer(kReadBase, "00:11:22:33:44:55" + std::string(13, ' ') + "x\n");
    EXPECT_EQ("00:00:00:00:00:00", address_of(nullptr));
}

TEST_F(Hwaddr, DoesNothingWithoutAnAddressOrAnInterface) {
    EXPECT_EQ(1, get_hwaddr_flash_raw("ra0", nullptr));
    EXPECT_EQ(1, get_hwaddr_flash("ra0", nullptr));
    EXPECT_EQ(1, set_hwaddr_flash_raw(nullptr));
    EXPECT_EQ(1, set_hwaddr_flash(nullptr));
    EXPECT_EQ(0, mt762x_update_wl_eeprom(nullptr));
    EXPECT_EQ(0, mt762x_set_eeprom_mac("ra0", nullptr));
    EXPECT_EQ(0, mt762x_set_eeprom_mac(nullptr, kBase));
    EXPECT_EQ(Lines{}, journal());
}

// The second radio's address is two above the base in its last byte, without carry.
const Lines kBothRadios = {"$2 iwpriv ra0 e2p 4=1100",  "$2 iwpriv ra0 e2p 6=3322",
                           "$2 iwpriv ra0 e2p 8=fe44",  "$2 ated -ira0 -c\"sync eeprom all\"",
                           "$2 iwpriv rai0 e2p 4=1100", "$2 iwpriv rai0 e2p 6=3322",
                           "$2 iwpriv rai0 e2p 8=0044", "$2 ated -irai0 -c\"sync eeprom all\""};

TEST_F(Hwaddr, SettingStoresTheBaseAndThenBothRadios) {
    Lines expected = kBothRadios;
    expected.insert(expected.begin(),
                    "$ /sbin/uboot_env -s ethaddr=00:11:22:33:44:fe"
                    " | /sbin/mtd write - Config");
    EXPECT_EQ(1, set_hwaddr_flash("00:11:22:33:44:FE"));
    EXPECT_EQ(expected, journal());
    clear_journal();
    EXPECT_EQ(1, set_hwaddr_flash_raw(kBase));
    EXPECT_EQ(expected, journal());
}

TEST_F(Hwaddr, UpdatingTheRadiosLeavesTheBootEnvironment) {
    EXPECT_EQ(0, mt762x_update_wl_eeprom(kBase));
    EXPECT_EQ(kBothRadios, journal());
}

TEST_F(Hwaddr, UpdatingGoesOnWhenACommandFails) {
    on_command = [](const std::string&) { return 1; };
    EXPECT_EQ(0, mt762x_update_wl_eeprom(kBase));
    EXPECT_EQ(kBothRadios, journal());
}

TEST_F(Hwaddr, AnInterfaceNameIsEscapedForTheShell) {
    EXPECT_EQ(0, mt762x_set_eeprom_mac("ra0;reboot", kBase));
    EXPECT_EQ((Lines{"$2 iwpriv 'ra0;reboot' e2p 4=1100", "$2 iwpriv 'ra0;reboot' e2p 6=3322",
                     "$2 iwpriv 'ra0;reboot' e2p 8=fe44",
                     "$2 ated -i'ra0;reboot' -c\"sync eeprom all\""}),
              journal());
}

TEST_F(Hwaddr, AnInterfaceNameTooLongForTheCommandsRunsNothing) {
    EXPECT_EQ(0, mt762x_set_eeprom_mac(std::string(256, 'r').c_str(), kBase));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Hwaddr, TheRadiosNamesAreCutTo31Characters) {
    write_l1profile("INDEX0_main_ifname=" + std::string(40, 'a') + "\nINDEX1_main_ifname=b\n");
    mt762x_update_wl_eeprom(kBase);
    EXPECT_EQ("$2 iwpriv " + std::string(31, 'a') + " e2p 4=1100", journal().at(0));
    EXPECT_EQ("$2 iwpriv b e2p 4=1100", journal().at(4));
}

}  // namespace
