// The start of the platform: calibration data, kernel modules, pins.
#include <iterator>
#include <set>

#include "platform/flash.h"
#include "tests/support/board.h"

namespace {

using harness::Lines;

class PlatformStart : public harness::Board {
protected:
    PlatformStart() {
        write("/proc/mtd", "dev: size erasesize name\nmtd3: 00009000 00020000 \"Factory\"\n");
        write("/dev/mtd3", image_);
        write("/etc_ro/wlan/MT7615_EEPROM.bin", image_);
        write("/lib/firmware/other", "");
        write(kPins, "");
    }

    // All modules' commands behind the lines, with what is found of those that failed.
    static Lines inserting(Lines lines, const Lines& findings = {}) {
        for (const std::string name : module_list) {
            lines.push_back("$2 insmod " + name);
            for (const std::string& finding : findings)
                if (finding.starts_with(name + ' '))
                    lines.insert(lines.end(), {"err insmod " + name + " ==> Failed",
                                               "$2 ls " + name, "err " + finding});
        }
        return lines;
    }

    static constexpr const char* kPins = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
    const std::string image_ = std::string(0x9000, '\x22');
};

TEST_F(PlatformStart, LoadsEveryModuleOnceInOrderAndInstallsTheDefaultImageOverErasedFlash) {
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ(inserting({"mkdir /tmp/eeprom 0744"}), journal());
    EXPECT_TRUE(read("/lib/firmware/radio0.bin") == image_);
    EXPECT_EQ("mode 22 1", read(kPins).substr(0, 9));
    write("/dev/mtd3", std::string(0x9000, '\xFF'));
    clear_journal();
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ(Lines{image_}, inputs());
    EXPECT_EQ(inserting({"mkdir /tmp/eeprom 0744", "$> /sbin/mtd write - Factory",
                         "out Install Completed: /etc_ro/wlan/MT7615_EEPROM.bin"}),
              journal());
}

TEST_F(PlatformStart, ReportsAModuleThatFailsAndLoadsTheNext) {
    answer("insmod ecb.ko", 1);
    answer("insmod mt_whnat.ko", 1);
    answer("ls mt_whnat.ko", 2);
    EXPECT_EQ(0, init_mt7622());
    const Lines findings = {"ecb.ko exist", "mt_whnat.ko not exist"};
    EXPECT_EQ(inserting({"mkdir /tmp/eeprom 0744"}, findings), journal());
}

TEST_F(PlatformStart, GoesOnWhenNothingIsInItsPlace) {
    for (const char* path : {"/proc/mtd", "/lib/firmware", "/etc_ro", "/etc/wireless", kPins})
        remove(path);
    fail_nth("mkdir", 1);
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ(
        inserting({"err find_mtd_size Unable to open /proc/mtd",
                   "out EEPROM source file not found: /etc_ro/wlan/MT7615_EEPROM.bin",
                   "err find_mtd_size Unable to open /proc/mtd",
                   "err Could not open mtd device: Factory", "out Can't open /lib/firmware/"}),
        journal());
}

TEST(ModuleList, Names105FilesOnce) {
    const std::set<std::string> names(std::begin(module_list), std::end(module_list));
    EXPECT_EQ(105u, names.size());
    std::string sample;
    for (const int i : {0, 29, 58, 74, 99, 104}) sample += std::string(" ") + module_list[i];
    EXPECT_EQ(" crc-ccitt.ko sdhci-pltfm.ko ohci-platform.ko usblp.ko ebtable_nat.ko mt_whnat.ko",
              sample);
}

}  // namespace
