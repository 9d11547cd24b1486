#include "platform/flash.h"
#include "tests/support/board.h"

namespace {

using harness::Lines;
using namespace std::string_literals;

constexpr uint8_t kBase[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0xFE};

class Hwaddr : public harness::Board {
protected:
    Hwaddr() { answer("/sbin/uboot_env -g ethaddr", "00:11:22:33:44:fe\n"); }

    static std::string address_of(const char* ifname) {
        std::string text(20, 'x');
        EXPECT_EQ(1, get_hwaddr_flash(ifname, text.data()));
        EXPECT_EQ("\0xx"s, text.substr(17));
        return text.substr(0, 17);
    }
};

TEST_F(Hwaddr, AnOffsetIsAddedToTheLastByteWithoutCarry) {
    // The name, the last byte with and without the tool.
    for (const std::string row : {"eth0 01 23", "ra0 00 22", "rai0 05 27", "eth1 FF 21", " FE 20",
                                  "eth00 FE 20", "eth FE 20", "ETH0 FE 20"}) {
        const size_t blank = row.find(' ');
        const std::string ifname = row.substr(0, blank);
        EXPECT_EQ("00:11:22:33:44:" + row.substr(blank + 1, 2), address_of(ifname.c_str()));
        fail_nth("popen", 1);
        EXPECT_EQ("00:9F:33:00:11:" + row.substr(blank + 4), address_of(ifname.c_str()));
    }
    std::string mac(8, 'x');
    EXPECT_EQ(1, get_hwaddr_flash_raw("ra0", reinterpret_cast<uint8_t*>(mac.data())));
    EXPECT_EQ("\0\x11\x22\x33\x44\0xx"s, mac);
    EXPECT_EQ(Lines(9, "$< /sbin/uboot_env -g ethaddr"), journal());
}

// What a text that is no address becomes is the host's: ours reads it as zeroes.
TEST_F(Hwaddr, TheBaseIsReadFrom31CharactersAndNeverStale) {
    const std::string base = "00:11:22:33:44:55";
    for (const std::string& answered :
         {base + std::string(14, ' '), base + std::string(13, ' '), ""s}) {
        answer("/sbin/uboot_env -g ethaddr", answered.empty() ? answered : answered + "x\n");
        EXPECT_EQ(answered.size() == 31 ? base : "00:00:00:00:00:00", address_of(nullptr));
    }
}

TEST_F(Hwaddr, NothingIsDoneWithoutAnAddressOrAnInterface) {
    for (const int result : {get_hwaddr_flash_raw("ra0", nullptr), get_hwaddr_flash("ra0", nullptr),
                             set_hwaddr_flash_raw(nullptr), set_hwaddr_flash(nullptr)})
        EXPECT_EQ(1, result);
    const std::string too_long(256, 'r');
    for (const int result :
         {mt762x_update_wl_eeprom(nullptr), mt762x_set_eeprom_mac("ra0", nullptr),
          mt762x_set_eeprom_mac(nullptr, kBase), mt762x_set_eeprom_mac(too_long.c_str(), kBase)})
        EXPECT_EQ(0, result);
    EXPECT_EQ(Lines{}, journal());
}

// The second radio's address is two above the base in its last byte, without carry.
const Lines kBothRadios = {"$2 iwpriv ra0 e2p 4=1100",  "$2 iwpriv ra0 e2p 6=3322",
                           "$2 iwpriv ra0 e2p 8=fe44",  "$2 ated -ira0 -c\"sync eeprom all\"",
                           "$2 iwpriv rai0 e2p 4=1100", "$2 iwpriv rai0 e2p 6=3322",
                           "$2 iwpriv rai0 e2p 8=0044", "$2 ated -irai0 -c\"sync eeprom all\""};

TEST_F(Hwaddr, SettingStoresTheBaseAndThenBothRadiosWhateverFails) {
    on_command = [](const std::string&) { return 1; };
    EXPECT_EQ(0, mt762x_update_wl_eeprom(kBase));
    EXPECT_EQ(kBothRadios, journal());
    Lines expected = kBothRadios;
    expected.insert(expected.begin(),
                    "$ /sbin/uboot_env -s ethaddr=00:11:22:33:44:fe | /sbin/mtd write - Config");
    for (const bool raw : {false, true}) {
        clear_journal();
        EXPECT_EQ(1, raw ? set_hwaddr_flash_raw(kBase) : set_hwaddr_flash("00:11:22:33:44:FE"));
        EXPECT_EQ(expected, journal());
    }
}

TEST_F(Hwaddr, AnInterfaceNameIsCutTo31Characters) {
    const std::string name(31, 'b');
    write_l1profile("INDEX0_main_ifname=" + name + "b\nINDEX1_main_ifname=c\n");
    mt762x_update_wl_eeprom(kBase);
    EXPECT_EQ("$2 iwpriv " + name + " e2p 4=1100", journal().at(0));
    EXPECT_EQ("$2 iwpriv c e2p 4=1100", journal().at(4));
}

}  // namespace
