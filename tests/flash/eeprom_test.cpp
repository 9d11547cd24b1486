// Calibration data: its check, the image that is installed, the copy for the driver.
#include <cerrno>

#include "board/store/store.h"
#include "platform/flash.h"
#include "tests/support/board.h"

namespace {

using harness::Lines;
using namespace std::string_literals;

constexpr const char* kImage = "/etc_ro/wlan/MT7615_EEPROM.bin";
constexpr const char* kDriverFile = "/lib/firmware/radio0.bin";
constexpr const char* kInstalled = "out Install Completed: /etc_ro/wlan/MT7615_EEPROM.bin";
constexpr const char* kNoFactory = "err Could not open mtd device: Factory";
constexpr const char* kNoImage = "out EEPROM source file not found: /etc_ro/wlan/MT7615_EEPROM.bin";
constexpr const char* kNoTable = "err find_mtd_size Unable to open /proc/mtd";
constexpr const char* kTool = "$> /sbin/mtd write - Factory";
constexpr size_t kSize = 0x10000;

class Eeprom : public harness::Board {
protected:
    Eeprom() {
        list_factory("00010000");
        write("/dev/mtd3", flash_);
        remove("/lib");
        write("/lib/firmware/other", "");
    }

    void list_factory(const char* size) {
        write("/proc/mtd", std::string("dev:    size   erasesize  name\nmtd3: ") + size +
                               " 00020000 \"Factory\"\n");
    }

    // An image of which one radio's first bytes are replaced.
    static std::string with_head(std::string image, size_t offset, std::string_view head) {
        return image.replace(offset, head.size(), head);
    }

    void expect_installed(const std::string& image, const std::string& written) {
        write(kImage, image);
        EXPECT_EQ(0, install_eeprom(nullptr));
        EXPECT_EQ((Lines{kTool, kInstalled}), journal());
        EXPECT_TRUE(inputs() == Lines{written});  // too long to be printed
        clear_journal();
    }

    void expect_refused(const std::string& image, Lines messages = {}) {
        write(kImage, image);
        EXPECT_EQ(-1, install_eeprom(nullptr));
        messages.push_back("out Invalid EEPROM file size: /etc_ro/wlan/MT7615_EEPROM.bin");
        EXPECT_EQ(messages, journal());
        clear_journal();
    }

    const std::string flash_ = with_head(std::string(kSize, '\x15'), 0x8000, "\x17\x15\x01");
    static constexpr std::string_view kBlank = "\xFF\xFF\xFF\xFF";
    const std::string erased_ = std::string(kSize, '\xFF');
    const std::string image_ = std::string(kSize, '\x22');
};

TEST_F(Eeprom, IsSoundWithFourBytesThatAreNotErased) {
    for (const std::string& head :
         {"\0\0\0\0"s, "\xFF\xFF\xFF\xFF"s, "\0\0\0\1"s, "\xFF\xFF\xFF\xFE"s, "\0\0\xFF\xFF"s})
        for (const size_t offset : {0x0U, 0x8000U}) {
            write("/dev/mtd3", with_head(flash_, offset, head));
            EXPECT_EQ(head == std::string(4, head[0]) ? -1 : 0, check_eeprom()) << offset << head;
        }
}

TEST_F(Eeprom, OffsetsAreHexadecimalWithOrWithoutPrefix) {
    write("/dev/mtd3", with_head(with_head(erased_, 0x400, "good"), 0x8000, "good"));
    const std::string first = "INDEX0_EEPROM_offset=400\n";
    for (const std::string offset : {"0x8000", "8000", "0X8000", "8000 ;", "0x800", "zz", ""}) {
        write_l1profile(first + "INDEX1_EEPROM_offset=" + offset + "\n");
        EXPECT_EQ(offset.find("8000") != offset.npos ? 0 : -1, check_eeprom()) << offset;
    }
    for (const std::string& offsets : {first, "INDEX1_EEPROM_offset=8000\n"s}) {
        write_l1profile(offsets);
        EXPECT_EQ(-1, check_eeprom()) << offsets;
    }
}

TEST_F(Eeprom, IsNotSoundWhereItCannotBeRead) {
    remove("/dev/mtd3");
    EXPECT_EQ(-1, check_eeprom());
    write("/dev/mtd3", flash_.substr(0, 0x8000));
    EXPECT_EQ(-1, check_eeprom());
    const char* const too_short = "err mtd_readbuf error Factory:offset:00008000, n=0,len=4";
    EXPECT_EQ((Lines{kNoFactory, too_short}), journal());
}

TEST_F(Eeprom, InstallsAnImageAndKeepsWhatIsBehindAShorterOne) {
    expect_installed(image_, image_);
    for (const size_t size : {0x400U, 0x8000U, 0x8400U})
        expect_installed(image_.substr(0, size), image_.substr(0, size) + flash_.substr(size));
    write("/tmp/own.bin", image_);
    EXPECT_EQ(0, install_eeprom("/tmp/own.bin"));
    EXPECT_EQ((Lines{kTool, "out Install Completed: /tmp/own.bin"}), journal());
    EXPECT_TRUE(inputs() == Lines{image_});
    clear_journal();
    write("/dev/mtd3", erased_);
    expect_installed(image_.substr(0, 0x8200), image_.substr(0, 0x8200) + erased_.substr(0x8200));
}

// A radio without data gets them back from an image that is blank for the other one.
TEST_F(Eeprom, AnImageOfThePartitionsSizeIsInstalledWithoutALookAtAnythingElse) {
    const std::string images[] = {image_, with_head(image_, 0, kBlank),
                                  with_head(image_, 0x8000, kBlank), erased_,
                                  std::string((16 << 20) + 1, '\x22')};
    for (const bool readable : {true, false}) {
        if (!readable) remove("/dev/mtd3");
        for (const std::string& image : images) {
            list_factory(image.size() == kSize ? "00010000" : "01000001");
            expect_installed(image, image);
        }
    }
}

TEST_F(Eeprom, InstallIgnoresARadioWithoutAnOffset) {
    write_l1profile("INDEX1_EEPROM_offset=8000\n");
    const std::string image = with_head(image_, 0, kBlank).substr(0, 0x8000);
    expect_installed(image, image + flash_.substr(0x8000));
}

TEST_F(Eeprom, RefusesAnImageThatWouldSpoilTheFlash) {
    for (const std::string& image :
         {""s, image_ + "x", image_.substr(0, 0x83FF), image_.substr(0, 0x8001),
          image_.substr(0, 0x200), image_.substr(0, 1),
          with_head(image_, 0, kBlank).substr(0, 0x8400),
          with_head(image_, 0x8000, kBlank).substr(0, 0x8400)})
        expect_refused(image);
    write_l1profile("INDEX1_EEPROM_offset=fffd\n");  // the last three bytes
    expect_refused(image_.substr(0, 0xFFFE),
                   {"err mtd_readbuf error Factory:offset:0000fffd, n=3,len=4"});
    remove(kImage);
    EXPECT_EQ(-1, install_eeprom(nullptr));
    EXPECT_EQ(Lines{kNoImage}, journal());
}

TEST_F(Eeprom, AShorterImageNeedsAReadablePartitionAndAnyImageItsSize) {
    remove("/dev/mtd3");
    expect_refused(image_.substr(1), {kNoFactory});
    remove("/proc/mtd");
    expect_refused(image_, {kNoTable});
}

// Of the partition's size, which may be 2 GiB.
TEST_F(Eeprom, AFileThatCannotSuitThePartitionTakesNoMemory) {
    write("/tmp/byte", "1");
    write("/tmp/empty", "");
    ASSERT_TRUE(memory.make_fifo("/tmp/fifo"));
    const auto expect_file_refused = [this](const std::string& path) {
        EXPECT_EQ(-1, install_eeprom(path.c_str()));
        EXPECT_EQ("Invalid EEPROM file size: " + path + '\n', out());
    };
    fail_nth("malloc", 1);
    list_factory("7fffffff");
    for (const char* path : {"/tmp/empty", "/tmp/fifo"}) expect_file_refused(path);
    for (const char* size : {"80000000", "ffffffff", "00000000"}) {
        list_factory(size);
        expect_file_refused("/tmp/byte");
    }
    EXPECT_EQ(1, failures_left("malloc"));
    fail_no_more();
    list_factory("00010000");
    expect_file_refused("/tmp");  // a folder, which on some file systems has a size
}

TEST_F(Eeprom, TheDriverGetsTheFirst64KiBInAFileOfAPlainNameOfAtMost17Characters) {
    write("/dev/mtd3", flash_ + erased_);
    for (const char* size : {"00000400", "00020000"}) {
        list_factory(size);
        EXPECT_EQ(0, extract_eeprom());
        EXPECT_TRUE(read(kDriverFile) == flash_.substr(0, std::stoul(size, nullptr, 16))) << size;
    }
    for (const std::string name :
         {"17-characters.bin", "18-characters..bin", "../firmware/up", ""}) {
        const bool good = name.size() == 17;
        write_l1profile("INDEX0_EEPROM_name=" + name + "\n");
        EXPECT_EQ(good ? 0 : -1, extract_eeprom()) << name;
        EXPECT_EQ(good ? "" : "Can't open /lib/firmware/" + name + "\n", out());
    }
    EXPECT_TRUE(read("/lib/firmware/17-characters.bin") == flash_);
}

TEST_F(Eeprom, TheDriversFileIsWholeOrNotThere) {
    for (const auto& [function, last] : {std::pair("fwrite", 1), std::pair("fclose", 3)}) {
        fail_nth(function, last);  // the tables are closed before
        EXPECT_EQ(-1, extract_eeprom()) << function;
        EXPECT_EQ("(none)", read(kDriverFile));
        fail_nth(function, last, EINTR);
        EXPECT_EQ(0, extract_eeprom()) << function;
        EXPECT_TRUE(read(kDriverFile) == flash_);
    }
}

TEST_F(Eeprom, AnImageWhoseSizeCannotBeAskedIsRefused) {
    for (const int nth : {1, 2}) {
        fail_nth("lseek", nth);
        expect_refused(image_);
    }
}

TEST_F(Eeprom, TheDriversFileIsOpenedWhetherOrNotThePartitionCanBeRead) {
    remove("/dev/mtd3");
    for (const char* content : {"older", "(none)"}) {
        const bool exists = *content != '(';
        exists ? write(kDriverFile, content) : remove(kDriverFile);
        fail_nth("fopen", 3, EINTR);  // the partition table is read twice before
        EXPECT_EQ(0, extract_eeprom());
        EXPECT_EQ(exists ? content : "", read(kDriverFile));
    }
    const char* const no_file = "out Can't open /lib/firmware/radio0.bin";
    Lines expected = {kNoFactory, kNoFactory, kNoFactory, no_file, no_file};
    remove("/lib/firmware");
    EXPECT_EQ(-1, extract_eeprom());
    write("/dev/mtd3", flash_);
    EXPECT_EQ(-1, extract_eeprom());
    remove("/dev/mtd3");
    for (const std::string name : {"", "18-characters..bin"}) {
        write_l1profile(name.empty() ? "" : "INDEX0_EEPROM_name=" + name + '\n');
        EXPECT_EQ(-1, extract_eeprom());
        expected.insert(expected.end(), {kNoFactory, "out Can't open /lib/firmware/" + name});
    }
    EXPECT_EQ(expected, journal());
}

}  // namespace
