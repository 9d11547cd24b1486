// Calibration data: its check, the image that is installed, the copy for the driver.
#include "platform/flash.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr const char* kImage = "/etc_ro/wlan/MT7615_EEPROM.bin";
constexpr const char* kDriverFile = "/lib/firmware/radio0.bin";
constexpr const char* kInstalled = "Install Completed: /etc_ro/wlan/MT7615_EEPROM.bin\n";
constexpr const char* kRefused = "Invalid EEPROM file size: /etc_ro/wlan/MT7615_EEPROM.bin\n";
constexpr const char* kNoFactory = "Could not open mtd device: Factory\n";
constexpr size_t kSize = 0x10000;

class Eeprom : public harness::Board {
protected:
    Eeprom() {
        list_factory(kSize);
        write("/dev/mtd3", flash_);
        remove("/lib");
        write("/lib/firmware/other", "");
    }

    void list_factory(size_t size) {
        char line[64];
        std::snprintf(line, sizeof line, "mtd3: %08zx 00020000 \"Factory\"\n", size);
        write("/proc/mtd", std::string("dev:    size   erasesize  name\n") + line);
    }
    void set_offsets(const std::string& first, const std::string& second) {
        write_l1profile("INDEX0_EEPROM_name=radio0.bin\n" + first + second);
    }

    // An image of which one radio's first bytes are replaced.
    static std::string with_head(std::string image, size_t offset, std::string_view head) {
        return image.replace(offset, head.size(), head);
    }

    void expect_written(const std::string& bytes) {
        EXPECT_EQ(Lines{"$> /sbin/mtd write - Factory"}, journal());
        ASSERT_EQ(1u, inputs_taken().size());
        EXPECT_TRUE(inputs_taken()[0] == bytes);
        clear_journal();
    }
    const Lines& inputs_taken() {
        if (const Lines fresh = inputs(); !fresh.empty()) taken_ = fresh;
        return taken_;
    }

    const std::string flash_ = with_head(std::string(kSize, '\x15'), 0x8000, "\x17\x15\x01");
    const std::string erased_ = std::string(kSize, '\xFF');
    Lines taken_;
};

using std::string_literals::operator""s;

TEST_F(Eeprom, IsSoundWithFourBytesThatAreNotErased) {
    for (const auto& [head, result] : {
             std::pair("\0\0\0\0"s, -1),
             {"\xFF\xFF\xFF\xFF", -1},
             {"\0\0\0\1"s,        0 },
             {"\xFF\xFF\xFF\xFE", 0 },
             {"\0\0\xFF\xFF"s,    0 }
    })
        for (const size_t offset : {0x0U, 0x8000U}) {
            write("/dev/mtd3", with_head(flash_, offset, head));
            EXPECT_EQ(result, check_eeprom()) << offset << ' ' << head;
        }
}

TEST_F(Eeprom, OffsetsAreHexadecimalWithOrWithoutPrefix) {
    write("/dev/mtd3", with_head(with_head(erased_, 0x400, "good"), 0x8000, "good"));
    for (const auto& [second, result] : {
             std::pair("0x8000", 0),
             {"8000",   0 },
             {"0X8000", 0 },
             {"8000 ;", 0 },
             {"0x800",  -1},
             {"zz",     -1},
             {"",       -1}
    }) {
        set_offsets("INDEX0_EEPROM_offset=400\n",
                    "INDEX1_EEPROM_offset=" + std::string(second) + "\n");
        EXPECT_EQ(result, check_eeprom()) << second;
    }
    set_offsets("INDEX0_EEPROM_offset=400\n", "");
    EXPECT_EQ(-1, check_eeprom());
    set_offsets("", "INDEX1_EEPROM_offset=8000\n");
    EXPECT_EQ(-1, check_eeprom());
}

TEST_F(Eeprom, IsNotSoundWhereItCannotBeRead) {
    remove("/dev/mtd3");
    EXPECT_EQ(-1, check_eeprom());
    EXPECT_EQ(kNoFactory, err());
    write("/dev/mtd3", flash_.substr(0, 0x8000));
    EXPECT_EQ(-1, check_eeprom());
    EXPECT_EQ("mtd_readbuf error Factory:offset:00008000, n=0,len=4\n", err());
}

TEST_F(Eeprom, InstallsAnImageOfThePartitionsSize) {
    const std::string image(kSize, '\x22');
    write(kImage, image);
    write("/tmp/own.bin", with_head(image, 9, "own"));
    EXPECT_EQ(0, install_eeprom(nullptr));
    EXPECT_EQ(kInstalled, out());
    expect_written(image);
    EXPECT_EQ(0, install_eeprom("/tmp/own.bin"));
    EXPECT_EQ("Install Completed: /tmp/own.bin\n", out());
    expect_written(with_head(image, 9, "own"));
}

TEST_F(Eeprom, AShorterImageKeepsWhatIsBehindIt) {
    const std::string image(0x8400, '\x22');
    write(kImage, image);
    EXPECT_EQ(0, install_eeprom(nullptr));
    EXPECT_EQ(kInstalled, out());
    expect_written(image + flash_.substr(image.size()));
}

TEST_F(Eeprom, RefusesAnImageThatWouldSpoilTheFlash) {
    const std::string image(kSize, '\x22');
    const std::string_view blank = "\xFF\xFF\xFF\xFF";
    const auto refuse = [this](const char* what, const std::string& bytes) {
        write(kImage, bytes);
        EXPECT_EQ(-1, install_eeprom(nullptr)) << what;
        EXPECT_EQ(kRefused, out()) << what;
    };
    refuse("empty", "");
    refuse("longer", image + "x");
    refuse("ends within radio 1", image.substr(0, 0x83FF));
    refuse("ends within radio 0", image.substr(0, 0x200));
    refuse("blank over radio 0", with_head(image, 0, blank));
    refuse("blank over radio 1", with_head(image, 0x8000, blank));
    remove(kImage);
    EXPECT_EQ(-1, install_eeprom(nullptr));
    EXPECT_EQ("EEPROM source file not found: /etc_ro/wlan/MT7615_EEPROM.bin\n", out());
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Eeprom, WithoutAReadablePartitionOnlyAWholeImageGoesIn) {
    remove("/dev/mtd3");
    write(kImage, std::string(kSize, '\x22'));
    EXPECT_EQ(0, install_eeprom(nullptr));
    EXPECT_EQ(kInstalled, out());
    expect_written(std::string(kSize, '\x22'));
    write(kImage, std::string(kSize - 1, '\x22'));
    EXPECT_EQ(-1, install_eeprom(nullptr));
    EXPECT_EQ(kRefused, out());
    EXPECT_EQ(std::string(kNoFactory) + kNoFactory, err());
    remove("/proc/mtd");
    EXPECT_EQ(-1, install_eeprom(nullptr));
    EXPECT_EQ(kRefused, out());
    EXPECT_EQ("find_mtd_size Unable to open /proc/mtd\n", err());
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Eeprom, TheDriverGetsTheFirst64KiB) {
    EXPECT_EQ(0, extract_eeprom());
    EXPECT_TRUE(read(kDriverFile) == flash_);
    list_factory(2 * kSize);
    write("/dev/mtd3", erased_ + flash_);
    EXPECT_EQ(0, extract_eeprom());
    EXPECT_TRUE(read(kDriverFile) == erased_);
    list_factory(0x400);
    EXPECT_EQ(0, extract_eeprom());
    EXPECT_TRUE(read(kDriverFile) == erased_.substr(0, 0x400));
}

TEST_F(Eeprom, TheDriversFileHasAPlainNameOfAtMost17Characters) {
    for (const auto& [name, result] : {
             std::pair("17-characters.bin", 0),
             {"18-characters..bin", -1},
             {"../firmware/up",     -1},
             {"",                   -1}
    }) {
        write_l1profile(std::string("INDEX0_EEPROM_name=") + name + "\n");
        EXPECT_EQ(result, extract_eeprom()) << name;
        EXPECT_EQ(result == 0 ? "" : std::string("Can't open /lib/firmware/") + name + "\n", out());
    }
    write_l1profile("");
    EXPECT_EQ(-1, extract_eeprom());
    EXPECT_EQ("Can't open /lib/firmware/\n", out());
    EXPECT_TRUE(read("/lib/firmware/17-characters.bin") == flash_);
    for (const char* path : {"/lib/firmware/up", "/lib/firmware/18-characters..bin"})
        EXPECT_EQ("(none)", read(path));
}

TEST_F(Eeprom, TheDriversFileIsWholeOrNotThere) {
    fail_nth("fwrite", 1);
    EXPECT_EQ(-1, extract_eeprom());
    EXPECT_EQ("(none)", read(kDriverFile));
    remove("/lib/firmware");
    EXPECT_EQ(-1, extract_eeprom());
    EXPECT_EQ("Can't open /lib/firmware/radio0.bin\n", out());
}

TEST_F(Eeprom, TheDriversFileStaysWhenThereIsNothingToCopy) {
    write(kDriverFile, "older");
    remove("/dev/mtd3");
    EXPECT_EQ(-1, extract_eeprom());
    EXPECT_EQ(kNoFactory, err());
    EXPECT_EQ("older", read(kDriverFile));
}

}  // namespace
