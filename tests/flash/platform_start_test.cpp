// The start of the platform, as a whole journal.
#include <iterator>
#include <set>

#include "platform/flash.h"
#include "support/board.h"

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

    // All modules' commands behind the lines, with the ls of those that failed.
    static Lines inserting(Lines lines, const std::set<std::string>& failed = {}) {
        for (const std::string name : module_list) {
            lines.push_back("$2 insmod " + name);
            if (failed.contains(name)) lines.push_back("$2 ls " + name);
        }
        return lines;
    }

    static constexpr const char* kPins = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
    const std::string image_ = std::string(0x9000, '\x22');
};

TEST_F(PlatformStart, LoadsEveryModuleOnceInOrder) {
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ(inserting({"mkdir /tmp/eeprom 0744"}), journal());
    EXPECT_TRUE(read("/lib/firmware/radio0.bin") == image_);
    EXPECT_EQ("mode 22 1", read(kPins).substr(0, 9));
}

TEST_F(PlatformStart, InstallsTheDefaultImageOverErasedFlash) {
    write("/dev/mtd3", std::string(0x9000, '\xFF'));
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ("Install Completed: /etc_ro/wlan/MT7615_EEPROM.bin\n", out());
    EXPECT_EQ(Lines{image_}, inputs());
    EXPECT_EQ(inserting({"mkdir /tmp/eeprom 0744", "$> /sbin/mtd write - Factory"}), journal());
}

TEST_F(PlatformStart, ReportsAModuleThatFailsAndLoadsTheNext) {
    answer("insmod ecb.ko", 1);
    answer("insmod mt_whnat.ko", 1);
    answer("ls mt_whnat.ko", 2);
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ(
        "insmod ecb.ko ==> Failed\necb.ko exist\n"
        "insmod mt_whnat.ko ==> Failed\nmt_whnat.ko not exist\n",
        err());
    EXPECT_EQ(inserting({}, {"ecb.ko", "mt_whnat.ko"}), commands());
}

TEST_F(PlatformStart, GoesOnWhenNothingIsInItsPlace) {
    for (const char* path : {"/proc/mtd", "/lib/firmware", "/etc_ro", "/etc/wireless", kPins})
        remove(path);
    fail_nth("mkdir", 1);
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ(inserting({}), commands());
    EXPECT_NE("", out() + err());
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
