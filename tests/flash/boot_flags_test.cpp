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
    for (const auto& [output, flag] : {
             std::pair("0\n", 0), {"0\r\n", 0},
               {"1\n",   1},
               {"00\n",  1},
               {"0 \n",  1},
               {"",      1}
    }) {
        remove(kDiagCache);
        answer(kReadDiag, output);
        EXPECT_EQ(flag, check_diag_flag()) << output;
        EXPECT_EQ(std::to_string(flag), read(kDiagCache));
    }
    EXPECT_EQ(Lines(6, std::string("$< ") + kReadDiag), journal());
}

TEST_F(BootFlags, DiagIsOnAndNotCachedWhenTheToolCannotStart) {
    fail_nth("popen", 1);
    EXPECT_EQ(1, check_diag_flag());
    EXPECT_EQ("Can't get diag flag\n", err());
    EXPECT_EQ("(none)", read(kDiagCache));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootFlags, TheDiagCacheAnswersWhatItHoldsAndIsOnWhenUnreadable) {
    answer(kReadDiag, "0\n");
    for (const auto& [content, flag] : {
             std::pair("0", 0), {"1",   1},
               {"7\n", 7},
               {"",    0}
    }) {
        write(kDiagCache, content);
        EXPECT_EQ(flag, check_diag_flag());
    }
    remove(kDiagCache);
    write(std::string(kDiagCache) + "/file", "");
    EXPECT_EQ(1, check_diag_flag());
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootFlags, SettingAFlagChangesTheBootVariableAlone) {
    write(kDiagCache, "1");
    EXPECT_EQ(0, clear_diag_flag());
    EXPECT_EQ(0, write_diag_flag());
    EXPECT_EQ(0, set_ated_flag());
    EXPECT_EQ((Lines{"$ /sbin/uboot_env -s diag=0 | /sbin/mtd write - Config",
                     "$ /sbin/uboot_env -s diag=1 | /sbin/mtd write - Config",
                     "$ /sbin/uboot_env -s ftm=on | /sbin/mtd write - Config"}),
              journal());
    EXPECT_EQ(1, check_diag_flag());
    EXPECT_EQ(0, is_factory_test_mode());
}

// The boot variable "ftm", as check_ated_flag() and set_ftm_cache() see it.
TEST_F(BootFlags, FactoryTestModeIsAskedForByOnAlone) {
    for (const auto& [output, wanted] : {
             std::pair("on\n", 1),
             {"on",     1},
             {"on\r\n", 1},
             {"ON\n",   0},
             {"on \n",  0},
             {"onn\n",  0},
             {"",       0}
    }) {
        SCOPED_TRACE(output);
        remove(kMarker);
        answer(kReadFtm, output);
        EXPECT_EQ(wanted, check_ated_flag());
        EXPECT_EQ(0, is_factory_test_mode());
        EXPECT_EQ(wanted, set_ftm_cache());
        EXPECT_EQ(wanted, is_factory_test_mode());
        EXPECT_EQ(wanted ? "on" : "(none)", read(kMarker));
    }
    EXPECT_EQ(Lines(14, std::string("$< ") + kReadFtm), journal());
}

TEST_F(BootFlags, FactoryTestModeIsNotAskedForWhenTheToolCannotStart) {
    for (int (*const ask)() : {check_ated_flag, set_ftm_cache}) {
        fail_nth("popen", 1);
        EXPECT_EQ(0, ask());
    }
    EXPECT_EQ("(none)", read(kMarker));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootFlags, FactoryTestModeIsTheMarkerWhateverItHolds) {
    write(kMarker, "");
    answer(kReadFtm, "off\n");
    EXPECT_EQ(0, set_ftm_cache());
    EXPECT_EQ(1, is_factory_test_mode());
    EXPECT_EQ("", read(kMarker));
    remove("/tmp");
    answer(kReadFtm, "on\n");
    EXPECT_EQ(1, set_ftm_cache());  // not reported: the marker cannot be written
    EXPECT_EQ(0, is_factory_test_mode());
}

class SystemActions : public harness::Board {};

TEST_F(SystemActions, RebootAsksProcessOneToEnd) {
    EXPECT_EQ(0, send_system_reboot_signal());
    EXPECT_EQ(Lines{"kill 1 15"}, journal());
}

TEST_F(SystemActions, RestoreReportsTheToolsStatus) {
    const char* const path = "/tmp/$(reboot) it's";
    const std::string command = R"(/sbin/restorebackup '/tmp/$(reboot) it'\''s')";
    EXPECT_EQ(0, restore_backup_config(path));
    answer(command, 0x100);
    EXPECT_EQ(-1, restore_backup_config(path));
    EXPECT_EQ(Lines(2, "$ " + command), journal());
    fail_nth("system", 1);
    EXPECT_EQ(-1, restore_backup_config(path));
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
