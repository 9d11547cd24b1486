#include "platform/flash.h"
#include "support/board.h"

namespace {

using harness::Lines;

constexpr const char* kDiagCache = "/tmp/diag_flag";
constexpr const char* kMarker = "/tmp/factory_default_mode";

class BootFlags : public harness::Board {};

TEST_F(BootFlags, DiagIsOffOnlyForAPlainZeroAndItsCacheAnswersWhatItHolds) {
    for (const std::string output : {"1\n", "00\n", "0 \n", "", "0\r\n", "0\n"}) {
        const int flag = output != "0\n" && output != "0\r\n";
        remove(kDiagCache);
        answer("/sbin/uboot_env -g diag", output);
        EXPECT_EQ(flag, check_diag_flag()) << output;
        EXPECT_EQ(std::to_string(flag), read(kDiagCache));
    }
    for (const char* content : {"0", "1", "7\n", ""}) {
        write(kDiagCache, content);
        EXPECT_EQ(std::atoi(content), check_diag_flag());
    }
    remove(kDiagCache);
    write(std::string(kDiagCache) + "/file", "");
    EXPECT_EQ(1, check_diag_flag());  // unreadable
    EXPECT_EQ(Lines(6, "$< /sbin/uboot_env -g diag"), journal());
}

TEST_F(BootFlags, SettingAFlagChangesTheBootVariableAlone) {
    write(kDiagCache, "1");
    EXPECT_EQ(0, clear_diag_flag() + write_diag_flag() + set_ated_flag());
    EXPECT_EQ((Lines{"$ /sbin/uboot_env -s diag=0 | /sbin/mtd write - Config",
                     "$ /sbin/uboot_env -s diag=1 | /sbin/mtd write - Config",
                     "$ /sbin/uboot_env -s ftm=on | /sbin/mtd write - Config"}),
              journal());
    EXPECT_EQ(1, check_diag_flag());
    EXPECT_EQ(0, is_factory_test_mode());
}

// The boot variable "ftm", as check_ated_flag() and set_ftm_cache() see it.
TEST_F(BootFlags, FactoryTestModeIsAskedForByOnAlone) {
    for (const std::string output : {"on\n", "on", "on\r\n", "ON\n", "on \n", "onn\n", ""}) {
        const int wanted = output == "on\n" || output == "on" || output == "on\r\n" ? 1 : 0;
        remove(kMarker);
        answer("/sbin/uboot_env -g ftm", output);
        EXPECT_EQ(wanted, check_ated_flag()) << output;
        EXPECT_EQ(0, is_factory_test_mode());
        EXPECT_EQ(wanted, set_ftm_cache());
        EXPECT_EQ(wanted, is_factory_test_mode());
        EXPECT_EQ(wanted ? "on" : "(none)", read(kMarker));
    }
    EXPECT_EQ(Lines(14, "$< /sbin/uboot_env -g ftm"), journal());
}

TEST_F(BootFlags, AToolThatCannotStartLeavesDiagOnAndFactoryTestModeOff) {
    for (int (*const ask)() : {check_diag_flag, check_ated_flag, set_ftm_cache}) {
        fail_nth("popen", 1);
        EXPECT_EQ(ask == check_diag_flag ? 1 : 0, ask());
    }
    EXPECT_EQ("Can't get diag flag\n", err());
    EXPECT_EQ("(none)", read(kDiagCache));
    EXPECT_EQ("(none)", read(kMarker));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootFlags, FactoryTestModeIsTheMarkerWhateverItHolds) {
    write(kMarker, "");
    EXPECT_EQ(0, set_ftm_cache());
    EXPECT_EQ(1, is_factory_test_mode());
    EXPECT_EQ("", read(kMarker));
    remove("/tmp");
    answer("/sbin/uboot_env -g ftm", "on\n");
    EXPECT_EQ(1, set_ftm_cache());  // not reported: the marker cannot be written
    EXPECT_EQ(0, is_factory_test_mode());
}

using SystemActions = BootFlags;

TEST_F(SystemActions, RestoreReportsTheToolsStatusAndRefusesPathsUnrun) {
    const std::string longest(4096, 'p');
    const std::string command = R"(/sbin/restorebackup '/tmp/$(reboot) it'\''s')";
    answer(command, 0x100);
    EXPECT_EQ(-1, restore_backup_config("/tmp/$(reboot) it's"));
    for (const std::string& path : {std::string(), std::string(4300, 'p'), std::string(4096, '\'')})
        EXPECT_EQ(-1, restore_backup_config(path.c_str()));
    EXPECT_EQ(-1, restore_backup_config(nullptr));
    EXPECT_EQ(0, restore_backup_config(longest.c_str()));
    EXPECT_EQ((Lines{"$ " + command, "$ /sbin/restorebackup " + longest}), journal());
    fail_nth("system", 1);
    EXPECT_EQ(-1, restore_backup_config("/tmp/backup"));
}

TEST_F(SystemActions, RebootAsksProcessOneToEndAndWhatThisBoardLacksAnswersAtOnce) {
    EXPECT_EQ(0, send_system_reboot_signal());
    EXPECT_EQ(-1, soft_reset());
    EXPECT_EQ(2, get_usb_mode());
    for (int (*const action)() : {set_pincode_flash, get_pincode_flash, set_usb_mode, platform_save,
                                  platform_default, platform_restore, platform_reset})
        EXPECT_EQ(0, action());
    for (const int value : {0, INT32_MAX}) EXPECT_EQ(value, platform_preinit(value));
    EXPECT_EQ(Lines{"kill 1 15"}, journal());
}

}  // namespace
