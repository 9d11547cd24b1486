// Flash partitions: the kernel's list, reading a device, handing bytes to the mtd tool.
#include <fcntl.h>
#include <unistd.h>

#include "platform/flash.h"
#include "platform/switch.h"
#include "tests/support/board.h"

namespace {

using harness::Lines;

constexpr const char* kTable =
    "dev:    size   erasesize  name\n"
    "mtd0: 00080000 00020000 \"Bootloader\"\n"
    "mtd1: 00040000 00020000 \"Config2\"\n"
    "mtd2:   00000020   00020000   \"Config\"\n"
    "mtd3: 00000040 00020000 \"Config\"\n"
    "mtd4: ffffffff 00020000 \"twenty-nine characters long..\"\n"
    "mtd5: 00000001 00020000 \"thirty characters and too long\"\n"
    "mtd2: 00000020 00020000 \"-option\"\n";

class Mtd : public harness::Board {
protected:
    Mtd() {
        write("/proc/mtd", kTable);
        write("/dev/mtd2", "0123456789abcdef0123456789ABCDEF");
    }
};

TEST_F(Mtd, SizeIsThatOfTheFirstLineWithTheWholeName) {
    EXPECT_EQ(0x20U, mtd_get_size("Config"));
    EXPECT_EQ(0x40000U, mtd_get_size("Config2"));
    EXPECT_EQ(0xFFFFFFFFU, mtd_get_size("twenty-nine characters long.."));
    for (const char* name :
         {"Conf", "onfig", "config", "name", "", "-option", "thirty characters and too long",
          "thirty characters and too long!!", "thirty characters and too long\"!",
          static_cast<const char*>(nullptr)})
        EXPECT_EQ(0U, mtd_get_size(name)) << name;
    EXPECT_EQ(0x20U, get_config_region_size());
    for (const char* rows : {"", "mtd0:\"Config\"\n", "mtd0: 0004", "mtd0: zz 1 \"Config\"\n",
                             "mtd0: 0004 0002 \"Config\""}) {
        write("/proc/mtd", std::string("dev:    size   erasesize  name\n") + rows);
        EXPECT_EQ(std::string_view(rows).ends_with("2 \"Config\"") ? 4U : 0U,
                  mtd_get_size("Config"));
    }
}

TEST_F(Mtd, OpensTheDeviceWithTheFlagsAskedAndTellsAMissingTableFromAMissingName) {
    for (const int flags : {O_RDONLY, O_RDWR, O_WRONLY | O_APPEND, O_RDWR | O_NONBLOCK | O_SYNC}) {
        const int device = mtd_open("Config", flags);
        EXPECT_EQ(flags, fcntl(device, F_GETFL) & (O_ACCMODE | O_APPEND | O_NONBLOCK | O_SYNC));
        EXPECT_EQ(0, close(device));
    }
    for (const char* name : {"Config2", "Conf", "-option", "thirty characters and too long"})
        EXPECT_EQ(-1, mtd_open(name, O_RDONLY)) << name;
    remove("/proc/mtd");
    EXPECT_EQ(0xFFFFFFFF, mtd_get_size("Config"));
    EXPECT_EQ("find_mtd_size Unable to open /proc/mtd\n", err());
    EXPECT_EQ(-1, mtd_open("Config", O_RDONLY));
    EXPECT_EQ("", err());
}

TEST_F(Mtd, ReadsFromAnOffsetAndCountsWhatThereWas) {
    std::string buffer(12, '#');
    EXPECT_EQ(8, read_config(buffer.data(), 16, 8));
    EXPECT_EQ("01234567####", buffer);
    EXPECT_EQ(2, read_config(buffer.data(), 30, 4));
    EXPECT_EQ("mtd_readbuf error Config:offset:0000001e, n=2,len=4\n", err());
    EXPECT_EQ(0, read_config(buffer.data(), 0, 0));
    EXPECT_EQ("EF234567####", buffer);
}

// A device of flash refuses to go past its end; a file does not.
TEST_F(Mtd, PastTheEndOfTheDeviceThereIsNothingToRead) {
    static int refusal;
    const harness::LibraryHook seek(
        "lseek", +[](int, off_t, int) { return errno = refusal, off_t{-1}; });
    char byte = '#';
    for (const int error : {EINVAL, EIO}) {
        refusal = error;
        const int count = error == EINVAL ? 0 : -1;
        EXPECT_EQ(count, read_config(&byte, 32, 1));
        EXPECT_EQ(
            "mtd_readbuf error Config:offset:00000020, n=" + std::to_string(count) + ",len=1\n",
            err());
    }
    EXPECT_EQ('#', byte);
}

TEST_F(Mtd, ReadsNothingWithoutADevice) {
    std::string buffer(4, '#');
    EXPECT_EQ(-1, mtd_readbuf(buffer.data(), 0, 4, "Config2"));
    EXPECT_EQ(-1, mtd_readbuf(buffer.data(), 0, 4, "Nowhere"));
    EXPECT_EQ("Could not open mtd device: Config2\nCould not open mtd device: Nowhere\n", err());
    fail_nth("read", 1);
    EXPECT_EQ(-1, mtd_readbuf(buffer.data(), 0, 4, "Config"));
    EXPECT_EQ("mtd_readbuf error Config:offset:00000000, n=-1,len=4\n", err());
    EXPECT_EQ("####", buffer);
}

// A process may have closed its standard input.
TEST_F(Mtd, DescriptorZeroIsADevice) {
    const int kept = dup(0);
    close(0);
    EXPECT_EQ(0, mtd_open("Config", O_RDONLY));
    EXPECT_EQ(0, close(0));
    char byte = '#';
    EXPECT_EQ(1, mtd_readbuf(&byte, 0, 1, "Config"));
    EXPECT_EQ('0', byte);
    EXPECT_EQ(0, switch_ioctl_init());
    EXPECT_EQ(0, switch_ioctl_fini());
    dup2(kept, 0);
    close(kept);
}

TEST_F(Mtd, HandsTheToolExactlyTheBytesAsked) {
    const std::string bytes("\0\1\n 45\0\xFF", 8);
    EXPECT_EQ(0, mtd_writebuf(bytes.data(), 2, 5, "Config"));
    EXPECT_EQ(0, mtd_writebuf(bytes.data(), 0, 0, "Config2"));
    EXPECT_EQ(0, write_config(bytes.data(), 3));
    EXPECT_EQ(0, write_config(nullptr, 64));
    const std::string tool = "$> /sbin/mtd write - Config";
    EXPECT_EQ((Lines{tool, tool + '2', tool, tool}), journal());
    EXPECT_EQ((Lines{bytes.substr(2, 5), "", bytes.substr(0, 3), "DEFAULT"}), inputs());
}

TEST_F(Mtd, AToolThatCannotStartIsReported) {
    fail_nth("popen", 1);
    EXPECT_EQ(-1, write_config("data", 4));
    EXPECT_EQ("mtd_writebuf: Failed to execute:/sbin/mtd write - Config\n", err());
    for (const char* name : {"", "-option", "thirty characters and too long"})
        EXPECT_EQ(-1, mtd_writebuf("data", 0, 4, name));
    EXPECT_EQ(-1, mtd_writebuf("data", -1, 4, "Config"));
    EXPECT_EQ(-1, mtd_writebuf("data", 0, -1, "Config"));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Mtd, AToolThatDiesEarlyDoesNotTakeUsWithIt) {
    const harness::LibraryHook open_hook(
        "popen", +[](const char*, const char* mode) { return popen("exec true", mode); });
    const harness::LibraryHook close_hook("pclose", pclose);
    const std::string much(1 << 20, 'x');
    EXPECT_EQ(0, mtd_writebuf(much.data(), 0, static_cast<int>(much.size()), "Config"));
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(0, sigismember(&pending, SIGPIPE));
}

TEST_F(Mtd, DeviceNamesAreCopiedWithinTheirSize) {
    for (const size_t size : {8U, 7U, 4U, 1U, 0U}) {
        std::string expected = std::string("Config").substr(0, size > 0 ? size - 1 : 0);
        if (size > 0) expected += '\0';
        expected.resize(8, '#');
        std::string buffer(8, '#');
        EXPECT_EQ(1, get_kdx_devname("Config", buffer.data(), static_cast<int>(size)));
        EXPECT_EQ(expected, buffer) << size;
    }
}

}  // namespace
