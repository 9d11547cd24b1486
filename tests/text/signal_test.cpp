// A host whose timer interrupts system calls, beside slow tools; texts that cannot be read on.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "board/store/store.h"
#include "platform/flash.h"
#include "platform/gpio.h"
#include "platform/switch.h"
#include "platform/wireless.h"
#include "platform/wlmap.h"
#include "src/host/host.h"
#include "tests/support/board.h"

namespace {

using harness::Lines;

class Signals : public harness::Board {
protected:
    Signals() : Board(Files::in_tree) {}

    // Runs the call beside a timer of 1 ms whose handler does without SA_RESTART.
    template <class Call>
    static auto interrupted(Call call) {
        ticks = 0;
        struct sigaction before, count = {};
        count.sa_handler = [](int) { ticks = ticks + 1; };
        sigaction(SIGALRM, &count, &before);
        constexpr itimerval kEachMillisecond = {
            {0, 1000},
            {0, 1000}
        };
        constexpr itimerval kNever = {};
        setitimer(ITIMER_REAL, &kEachMillisecond, nullptr);
        const auto result = call();
        setitimer(ITIMER_REAL, &kNever, nullptr);
        sigaction(SIGALRM, &before, nullptr);
        EXPECT_LT(0, ticks) << "no signal came";
        return result;
    }

    // What the shell runs instead of the library's commands.
    static inline std::string tool;

private:
    static inline volatile sig_atomic_t ticks;
    const harness::LibraryHook open_{
        "popen", +[](const char*, const char* mode) { return popen(tool.c_str(), mode); }};
    const harness::LibraryHook close_{"pclose", pclose};
};

TEST_F(Signals, AllBytesReachASlowFlashTool) {
    std::string bytes(262144, '\0');
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * i >> 8);
    tool = "sleep 0.02; cat > " + board::root() + "/tmp/flash";
    EXPECT_EQ(0, interrupted([&] { return mtd_writebuf(bytes.data(), 0, 262144, "Config"); }));
    EXPECT_TRUE(bytes == read("/tmp/flash"));
}

TEST_F(Signals, TheDiagnosticsFlagIsThatOfASlowTool) {
    tool = "sleep 0.02; echo 0";
    EXPECT_EQ(0, interrupted(check_diag_flag));
    EXPECT_EQ("0", read("/tmp/diag_flag"));
}

TEST_F(Signals, AnAddressThatComesInPiecesIsWhole) {
    tool = "printf 00:9F:3; sleep 0.02; printf '3:01:02:10\\n'";
    char text[18];
    EXPECT_EQ(1, interrupted([&] { return get_hwaddr_flash("rai0", text); }));
    EXPECT_STREQ("00:9F:33:01:02:17", text);
}

TEST_F(Signals, APieceMayBeTheLastOfItsText) {
    tool = "printf on; sleep 0.02";
    char value[4] = "###";
    EXPECT_EQ(1, interrupted([&] { return get_bootconfig("ftm", value, sizeof value); }));
    EXPECT_EQ(std::string("on\0", 4), std::string(value, 4));
}

TEST_F(Signals, APhyRegisterKeepsWhatASlowToolReads) {
    tool = "sleep 0.01; printf value=0x00; sleep 0.01; echo 01";
    static constexpr port_setting kAuto = {"auto", "", ""};
    on_ioctl[0x89F3] = on_ioctl[0x89F4] = [](void*) { return 0; };
    EXPECT_EQ(0, interrupted([] { return set_port_config(1, &kAuto); }));
    EXPECT_EQ((Lines{"$2 switch phy cl22 w 0 4 481", "$2 switch phy cl22 w 0 9 769",
                     "$2 switch phy cl22 w 0 0 513"}),
              commands());
}

// Opening a FIFO waits for its writer.
TEST_F(Signals, AFileIsOpenedAndReadToItsEnd) {
    board::make_directories("/proc");
    const std::string path = board::in_tree("/proc/mtd");
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    FILE* const writer =
        popen(("(sleep 0.01; printf 'mtd2: 0000'; sleep 0.01; echo '0040 1 \"Config\"') >" + path)
                  .c_str(),
              "w");
    EXPECT_EQ(0x40U, interrupted([] { return mtd_get_size("Config"); }));
    const int reader = open(path.c_str(), O_RDWR | O_CLOEXEC);  // or the writer might wait for one
    EXPECT_EQ(0, pclose(writer));
    close(reader);
}

TEST_F(Signals, APauseLasts) {
    const harness::LibraryHook hook("usleep", usleep);
    const harness::LibraryHook clock("clock_gettime", clock_gettime);
    write(harness::kPinPath, "one\ntwo\n62: 0 0 0 0 0 0 0 0 0\n");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(1, interrupted([] { return check_default_button(20, 2); }));
    EXPECT_LE(std::chrono::milliseconds(20), std::chrono::steady_clock::now() - start);
    EXPECT_EQ("Reset Pushed 1\n", out());
}

class ReadErrors : public harness::Board {};

TEST_F(ReadErrors, AreNotTheEndOfAText) {
    write("/proc/mtd", "mtd2: 00000040 1 \"Config\"\n");
    write("/tmp/rai0.dfsinfo", "one line\n");
    write("/tmp/apcli0.stat", "one line\n");
    write("/var/run/station_table.ra0", "MAC AID BSS\n00:11:22:AA:BB:CC 1 0\n");
    static station_list list;
    static dfs_info info;
    const struct {
        int line;  // the one that cannot be read
        std::function<int()> call;
        int result;
        std::string printed;
    } rows[] = {
        {1, [] { return static_cast<int>(mtd_get_size("Config")); },            -1,
         "find_mtd_size Unable to open /proc/mtd\n"                                                               },
        {2, [] { return static_cast<int>(mtd_get_size("Config2")); },           -1,
         "find_mtd_size Unable to open /proc/mtd\n"                                                               },
        {1, [] { return int{*get_wl_ifname_by_wlmode(0)}; },                    0,  "ERROR: L1PROFILE not found\n"},
        {1, check_diag_flag,                                                    1,  "Can't get diag flag\n"       },
        {1, check_ated_flag,                                                    0,  ""                            },
        {2, [] { return wireless_get_dfs_info("rai0", &info); },                0,
         "fopen /sbin/iwpriv rai0 stat > /tmp/rai0.dfsinfo fail"                                                  },
        {2, [] { return mt762x_get_apcli_status("apcli0", nullptr, nullptr); }, 0,
         "popen /sbin/iwpriv apcli0 stat > /tmp/apcli0.stat fail"                                                 },
        {3, [] { return wireless_api_get_station_list(&list); },                1,  ""                            },
    };
    for (const auto& row : rows) {
        sf_strncpy(list.ifname, "ra0", sizeof list.ifname);
        fail_nth("fgets", row.line);
        EXPECT_EQ(row.result, row.call());
        EXPECT_EQ(row.printed, out() + err());
    }
    EXPECT_EQ(0U, list.count);
    EXPECT_EQ("(none)", read("/tmp/diag_flag"));
    char text[18];
    fail_nth("fgets", 1);
    get_hwaddr_flash("br0", text);
    EXPECT_STREQ("00:9F:33:00:11:20", text);
}

}  // namespace
