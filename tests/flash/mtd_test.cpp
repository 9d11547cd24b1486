// Flash partitions: the kernel's list, reading a device, handing bytes to the mtd tool.
#include <fcntl.h>
#include <unistd.h>

#include "platform/flash.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr const char* kTable =
    "dev:    size   erasesize  name\n"
    "mtd0: 00080000 00020000 \"Bootloader\"\n"
    "mtd1: 00040000 00020000 \"Config2\"\n"
    "mtd2:   00000020   00020000   \"Config\"\n"
    "mtd3: 00000040 00020000 \"Config\"\n"
    "mtd4: ffffffff 00020000 \"twenty-nine characters long..\"\n"
    "mtd5: 00000001 00020000 \"thirty characters and too long\"\n";

class Mtd : public harness::Board {
protected:
    Mtd() {
        write("/proc/mtd", kTable);
        write("/dev/mtd2", "0123456789abcdef0123456789ABCDEF");
    }
};

TEST_F(Mtd, SizeIsThatOfTheFirstLineWithTheWholeName) {
    for (const auto& [name, size] : {
             std::pair("Config", 0x20U),
             {"Config2",                           0x40000U   },
             {"Bootloader",                        0x80000U   },
             {"Conf",                              0U         },
             {"onfig",                             0U         },
             {"config",                            0U         },
             {"name",                              0U         },
             {"",                                  0U         },
             {"twenty-nine characters long..",     0xFFFFFFFFU},
             {"thirty characters and too long",    0U         },
             {"thirty characters and too long!!",  0U         },
             {"thirty characters and too long\"!", 0U         }
    })
        EXPECT_EQ(size, mtd_get_size(name)) << name;
    EXPECT_EQ(0x20U, get_config_region_size());
    EXPECT_EQ(0U, mtd_get_size(nullptr));
}

TEST_F(Mtd, ATableThatSaysNoSizeGivesNone) {
    const std::string header = "dev:    size   erasesize  name\n";
    for (const char* rows : {"", "mtd0:\"Config\"\n", "mtd0: 0004", "mtd0: zz 1 \"Config\"\n"}) {
        write("/proc/mtd", header + rows);
        EXPECT_EQ(0U, mtd_get_size("Config")) << rows;
    }
    write("/proc/mtd", header + "mtd0: 0004 0002 \"Config\"");
    EXPECT_EQ(4U, mtd_get_size("Config"));
}

TEST_F(Mtd, AMissingTableIsToldApartFromAMissingName) {
    remove("/proc/mtd");
    EXPECT_EQ(0xFFFFFFFF, mtd_get_size("Config"));
    EXPECT_EQ("find_mtd_size Unable to open /proc/mtd\n", err());
    EXPECT_EQ(-1, mtd_open("Config", O_RDONLY));
    EXPECT_EQ("", err());
}

TEST_F(Mtd, OpensTheDeviceWithTheFlagsAsked) {
    for (const int flags : {O_RDONLY, O_RDWR}) {
        const int device = mtd_open("Config", flags);
        EXPECT_EQ(flags, fcntl(device, F_GETFL) & O_ACCMODE);
        EXPECT_EQ(0, close(device));
    }
    for (const char* name : {"Config2", "Conf", "thirty characters and too long"})
        EXPECT_EQ(-1, mtd_open(name, O_RDONLY)) << name;
}

TEST_F(Mtd, ReadsFromAnOffsetAndCountsWhatThereWas) {
    struct Row {
        int offset, length;
        const char* bytes;
        const char* message;
    };
    for (const Row& row : {
             Row{16, 8,  "01234567", ""                                                      },
             {30, 4,  "EF",       "mtd_readbuf error Config:offset:0000001e, n=2,len=4\n" },
             {32, 1,  "",         "mtd_readbuf error Config:offset:00000020, n=0,len=1\n" },
             {64, 16, "",         "mtd_readbuf error Config:offset:00000040, n=0,len=16\n"},
             {0,  0,  "",         ""                                                      }
    }) {
        std::string buffer(20, '#');
        const std::string expected = row.bytes;
        EXPECT_EQ(static_cast<int>(expected.size()),
                  read_config(buffer.data(), row.offset, row.length));
        EXPECT_EQ(expected + std::string(20 - expected.size(), '#'), buffer);
        EXPECT_EQ(row.message, err());
    }
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

TEST_F(Mtd, HandsTheToolExactlyTheBytesAsked) {
    std::string buffer(64, '\0');
    for (size_t i = 0; i < buffer.size(); ++i) buffer[i] = static_cast<char>(i);
    EXPECT_EQ(0, mtd_writebuf(buffer.data(), 16, 32, "Config"));
    EXPECT_EQ(0, mtd_writebuf(buffer.data(), 0, 0, "Config2"));
    EXPECT_EQ(0, write_config(buffer.data(), 3));
    EXPECT_EQ(0, write_config(nullptr, 64));
    EXPECT_EQ((Lines{"$> /sbin/mtd write - Config", "$> /sbin/mtd write - Config2",
                     "$> /sbin/mtd write - Config", "$> /sbin/mtd write - Config"}),
              journal());
    EXPECT_EQ((Lines{buffer.substr(16, 32), "", buffer.substr(0, 3), "DEFAULT"}), inputs());
}

TEST_F(Mtd, AToolThatCannotStartIsReported) {
    fail_nth("popen", 1);
    EXPECT_EQ(-1, write_config("data", 4));
    EXPECT_EQ("mtd_writebuf: Failed to execute:/sbin/mtd write - Config\n", err());
    for (const char* name : {"", "thirty characters and too long"})
        EXPECT_EQ(-1, mtd_writebuf("data", 0, 4, name));
    EXPECT_EQ(-1, mtd_writebuf("data", -1, 4, "Config"));
    EXPECT_EQ(-1, mtd_writebuf("data", 0, -1, "Config"));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(Mtd, AToolThatDiesEarlyDoesNotTakeUsWithIt) {
    FILE* (*const die)(const char*, const char*) = [](const char*, const char* mode) {
        return popen("exec true", mode);
    };
    int (*const bury)(FILE*) = [](FILE* pipe) { return pclose(pipe); };
    const harness::LibraryHook open_hook("popen", die);
    const harness::LibraryHook close_hook("pclose", bury);
    const std::string much(1 << 20, 'x');
    EXPECT_EQ(0, mtd_writebuf(much.data(), 0, static_cast<int>(much.size()), "Config"));
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(0, sigismember(&pending, SIGPIPE));
}

TEST_F(Mtd, DeviceNamesAreCopiedWithinTheirSize) {
    for (const auto& [size, expected] : {
             std::pair(8, "Config\0#"),
             {7, "Config\0#"},
             {4, "Con\0####"},
             {1, "\0#######"},
             {0, "########" }
    }) {
        std::string buffer(8, '#');
        EXPECT_EQ(1, get_kdx_devname("Config", buffer.data(), size));
        EXPECT_EQ(std::string(expected, 8), buffer) << size;
    }
}

}  // namespace
