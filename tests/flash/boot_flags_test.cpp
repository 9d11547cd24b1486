#include "platform/flash.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr const char* kReadDiag = "/sbin/uboot_env -g diag";
constexpr const char* kReadFtm = "/sbin/uboot_env -g ftm";
constexpr const char* kDiagCache = "/tmp/diag_flag";
constexpr const char* kMarker = "/tmp/factory_default_mode";

class BootFlags : public harness::Board {};

TEST_F(BootFlags, DiagIsOffOnlyForAPlainZeroAndThenCached) {
    const struct {
        const char* output;
        int flag;
        const char* cached;
    } kRows[] = {
        {"0\n",   0, "0"},
        {"0\r\n", 0, "0"},
        {"1\n",   1, "1"},
        {"00\n",  1, "1"},
        {"0 \n",  1, "1"},
        {"off\n", 1, "1"},
        {"",      1, "1"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.output);
        remove(kDiagCache);
        answer(kReadDiag, row.output);
        EXPECT_EQ(row.flag, check_diag_flag());
        EXPECT_EQ(row.cached, read(kDiagCache));
    }
    EXPECT_EQ(Lines(std::size(kRows), std::string("$< ") + kReadDiag), journal());
}

TEST_F(BootFlags, DiagIsOnAndNotCachedWhenTheToolCannotStart) {
    fail_next("popen");
    EXPECT_EQ(1, check_diag_flag());
    EXPECT_EQ("Can't get diag flag\n", err());
    EXPECT_FALSE(exists(kDiagCache));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootFlags, TheDiagCacheAnswersWhatItHolds) {
    answer(kReadDiag, "0\n");
    for (const auto& [content, flag] : {
             std::pair("0", 0), {"1",   1},
               {"7\n", 7},
               {"",    0}
    }) {
        write(kDiagCache, content);
        EXPECT_EQ(flag, check_diag_flag());
    }
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootFlags, AnUnreadableDiagCacheIsOn) {
    write(std::string(kDiagCache) + "/file", "");
    EXPECT_EQ(1, check_diag_flag());
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootFlags, ChangingDiagLeavesTheCachedAnswer) {
    answer(kReadDiag, "1\n");
    EXPECT_EQ(1, check_diag_flag());
    clear_journal();
    EXPECT_EQ(0, clear_diag_flag());
    EXPECT_EQ(0, write_diag_flag());
    EXPECT_EQ((Lines{"$ /sbin/uboot_env -s diag=0 | /sbin/mtd write - Config",
                     "$ /sbin/uboot_env -s diag=1 | /sbin/mtd write - Config"}),
              journal());
    answer(kReadDiag, "0\n");
    EXPECT_EQ(1, check_diag_flag());
}

// The boot variable "ftm", as check_ated_flag() and set_ftm_cache() see it.
TEST_F(BootFlags, FactoryTestModeIsAskedForByOnAlone) {
    const std::pair<const char*, int> kRows[] = {
        {"on\n",   1},
        {"on",     1},
        {"on\r\n", 1},
        {"ON\n",   0},
        {"on \n",  0},
        {"onn\n",  0},
        {"off\n",  0},
        {"",       0},
        {"\non\n", 0}
    };
    for (const auto& [output, wanted] : kRows) {
        SCOPED_TRACE(output);
        remove(kMarker);
        answer(kReadFtm, output);
        EXPECT_EQ(wanted, check_ated_flag());
        EXPECT_EQ(0, is_factory_test_mode());
        EXPECT_EQ(wanted, set_ftm_cache());
        EXPECT_EQ(wanted, is_factory_test_mode());
        EXPECT_EQ(wanted ? "on" : "(none)", read(kMarker));
    }
    EXPECT_EQ(Lines(2 * std::size(kRows), std::string("$< ") + kReadFtm), journal());
}

TEST_F(BootFlags, FactoryTestModeIsNotAskedForWhenTheToolCannotStart) {
    fail_next("popen");
    EXPECT_EQ(0, check_ated_flag());
    fail_next("popen");
    EXPECT_EQ(0, set_ftm_cache());
    EXPECT_FALSE(exists(kMarker));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootFlags, FactoryTestModeLastsWhateverTheMarkerHolds) {
    write(kMarker, "");
    answer(kReadFtm, "off\n");
    EXPECT_EQ(0, set_ftm_cache());
    EXPECT_EQ(1, is_factory_test_mode());
    EXPECT_EQ("", read(kMarker));
}

TEST_F(BootFlags, AMarkerThatCannotBeWrittenIsNotReported) {
    remove("/tmp");
    answer(kReadFtm, "on\n");
    EXPECT_EQ(1, set_ftm_cache());
    EXPECT_EQ(0, is_factory_test_mode());
}

TEST_F(BootFlags, AskingForTheFactoryTestModeSetsTheVariableAlone) {
    EXPECT_EQ(0, set_ated_flag());
    EXPECT_EQ(Lines{"$ /sbin/uboot_env -s ftm=on | /sbin/mtd write - Config"}, journal());
    EXPECT_EQ(0, is_factory_test_mode());
}

class SystemActions : public harness::Board {};

TEST_F(SystemActions, RebootAsksProcessOneToEnd) {
    EXPECT_EQ(0, send_system_reboot_signal());
    EXPECT_EQ(Lines{"kill 1 15"}, journal());
}

TEST_F(SystemActions, RestoreReportsTheToolsStatus) {
    EXPECT_EQ(0, restore_backup_config("/tmp/backup.bin"));
    answer("/sbin/restorebackup /tmp/backup.bin", 0x100);
    EXPECT_EQ(-1, restore_backup_config("/tmp/backup.bin"));
    EXPECT_EQ(Lines(2, "$ /sbin/restorebackup /tmp/backup.bin"), journal());
    fail_next("system");
    EXPECT_EQ(-1, restore_backup_config("/tmp/backup.bin"));
}

TEST_F(SystemActions, RestoreEscapesThePath) {
    EXPECT_EQ(0, restore_backup_config("/tmp/$(reboot) it's"));
    EXPECT_EQ(Lines{R"($ /sbin/restorebackup '/tmp/$(reboot) it'\''s')"}, journal());
}

TEST_F(SystemActions, RestoreTakesTheLongestPathAndRefusesOthersUnrun) {
    const std::string longest(4096, 'p');
    for (const std::string& path : {std::string(), std::string(4300, 'p'), std::string(4096, '\'')})
        EXPECT_EQ(-1, restore_backup_config(path.c_str()));
    EXPECT_EQ(-1, restore_backup_config(nullptr));
    EXPECT_EQ(Lines{}, journal());
    EXPECT_EQ(0, restore_backup_config(longest.c_str()));
    EXPECT_EQ(Lines{"$ /sbin/restorebackup " + longest}, journal());
}

TEST_F(SystemActions, ThatThisBoardLacksAnswerAtOnce) {
    const std::pair<int (*)(), int> kRows[] = {
        {soft_reset,        -1},
        {set_pincode_flash, 0 },
        {get_pincode_flash, 0 },
        {get_usb_mode,      2 },
        {set_usb_mode,      0 },
        {platform_save,     0 },
        {platform_default,  0 },
        {platform_restore,  0 },
        {platform_reset,    0 }
    };
    for (const auto& [function, result] : kRows) EXPECT_EQ(result, function());
    for (const int value : {0, 1, -5, INT32_MAX}) EXPECT_EQ(value, platform_preinit(value));
    EXPECT_EQ(Lines{}, journal());
}

}  // namespace
