// The start of the platform, as a whole journal.
#include <algorithm>
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
        write("/etc_ro/wlan/MT7615_EEPROM.bin", image_);
        write("/lib/firmware/other", "");
        write(kPins, "");
    }

    // The flash holds the bytes; the mtd tool would change them.
    void start(const std::string& flash) {
        write("/dev/mtd3", flash);
        EXPECT_EQ(0, init_mt7622());
    }
    static Lines inserting(size_t first, size_t last) {
        Lines lines;
        for (size_t i = first; i < last; ++i)
            lines.push_back("$2 insmod " + std::string(module_list[i]));
        return lines;
    }

    static constexpr const char* kPins = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
    const std::string image_ = std::string(0x9000, '\x22');
};

void append(Lines& lines, const Lines& more) {
    std::ranges::copy(more, std::back_inserter(lines));
}

TEST_F(PlatformStart, LoadsEveryModuleOnceInOrder) {
    start(image_);
    Lines expected = {"mkdir /tmp/eeprom 0744"};
    append(expected, inserting(0, MODULE_COUNT));
    EXPECT_EQ(expected, journal());
    EXPECT_TRUE(read("/lib/firmware/radio0.bin") == image_);
    EXPECT_EQ("mode 22 1", read(kPins).substr(0, 9));
}

TEST_F(PlatformStart, InstallsTheDefaultImageOverErasedFlash) {
    start(std::string(0x9000, '\xFF'));
    EXPECT_EQ("Install Completed: /etc_ro/wlan/MT7615_EEPROM.bin\n", out());
    EXPECT_EQ(Lines{image_}, inputs());
    Lines expected = {"mkdir /tmp/eeprom 0744", "$> /sbin/mtd write - Factory"};
    append(expected, inserting(0, MODULE_COUNT));
    EXPECT_EQ(expected, journal());
}

TEST_F(PlatformStart, ReportsAModuleThatFailsAndLoadsTheNext) {
    answer("insmod ecb.ko", 1);
    answer("insmod mt_whnat.ko", 1);
    answer("ls mt_whnat.ko", 2);
    start(image_);
    EXPECT_EQ(
        "insmod ecb.ko ==> Failed\necb.ko exist\n"
        "insmod mt_whnat.ko ==> Failed\nmt_whnat.ko not exist\n",
        err());
    Lines expected = inserting(0, 2);
    expected.push_back("$2 ls ecb.ko");
    append(expected, inserting(2, MODULE_COUNT));
    expected.push_back("$2 ls mt_whnat.ko");
    EXPECT_EQ(expected, commands());
}

TEST_F(PlatformStart, GoesOnWhenNothingIsInItsPlace) {
    for (const char* path : {"/proc/mtd", "/lib/firmware", "/etc_ro", "/etc/wireless", kPins})
        remove(path);
    fail_nth("mkdir", 1);
    EXPECT_EQ(0, init_mt7622());
    EXPECT_EQ(inserting(0, MODULE_COUNT), commands());
    EXPECT_NE("", out());
    EXPECT_NE("", err());
}

TEST(ModuleList, Names105FilesOnce) {
    const std::set<std::string> names(std::begin(module_list), std::end(module_list));
    EXPECT_EQ(105u, names.size());
    EXPECT_STREQ("crc-ccitt.ko", module_list[0]);
    EXPECT_STREQ("sdhci-pltfm.ko", module_list[29]);
    EXPECT_STREQ("ohci-platform.ko", module_list[58]);
    EXPECT_STREQ("usblp.ko", module_list[74]);
    EXPECT_STREQ("ebtable_nat.ko", module_list[99]);
    EXPECT_STREQ("mt_whnat.ko", module_list[104]);
}

}  // namespace
