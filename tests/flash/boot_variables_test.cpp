// Boot variables: their values, the flags that they are, and what is kept of them.
#include <cstring>

#include "platform/flash.h"
#include "tests/support/board.h"

extern "C" int platform_any_arguments();  // of surface/plain_c.c

namespace {

using harness::Lines;

class BootVariable : public harness::Board {
protected:
    // Reads the variable into the first bytes of a filled room of 12.
    int get(const char* name, int size) {
        room_ = std::string(12, 'x');
        return get_bootconfig(name, room_.data(), size);
    }

    static std::string setting(const std::string& assignment) {
        return "$ /sbin/uboot_env -s " + assignment + " | /sbin/mtd write - Config";
    }

    std::string room_;
};

TEST_F(BootVariable, IsTheFirstLineInAClearedBuffer) {
    for (const std::string output :
         {"on\n", "on", "", "\nx", "a\nb\n", " a \n", "1234567\n", "12345678\n"}) {
        answer("/sbin/uboot_env -g name", output);
        EXPECT_EQ(1, get("name", 8));
        std::string value = output.substr(0, std::min<size_t>(output.find('\n'), 7));
        value.resize(8, '\0');
        EXPECT_EQ(value + "xxxx", room_) << output;
    }
    EXPECT_EQ(Lines(8, "$< /sbin/uboot_env -g name"), journal());
}

TEST_F(BootVariable, IsEmptyWithoutAToolOrANameAndNeedsRoom) {
    const std::string too_long(256 - strlen("/sbin/uboot_env -g "), 'n');
    fail_nth("popen", 1);
    for (const char* name :
         {"name", "", "-option", static_cast<const char*>(nullptr), too_long.c_str()}) {
        EXPECT_EQ(0, get(name, 8));
        EXPECT_EQ(std::string(8, '\0') + "xxxx", room_);
    }
    for (const int size : {0, -1, INT32_MIN}) {
        EXPECT_EQ(0, get("name", size));
        EXPECT_EQ(std::string(12, 'x'), room_);
    }
    EXPECT_EQ(0, get_bootconfig("name", nullptr, 8));
    EXPECT_EQ(Lines{}, journal());
    on_command = [](const std::string&) { return "on\n"; };
    EXPECT_EQ(1, get(too_long.c_str() + 1, 1));
    EXPECT_EQ('\0' + std::string(11, 'x'), room_);
}

TEST_F(BootVariable, IsSetByTheToolForEachPairAndReportsNoFailure) {
    on_command = [](const std::string&) { return 0x100; };
    const std::pair<const char*, Lines> kRows[] = {
        {"b=1&a=2&b=3",  {"b=1", "a=2", "b=3"}},
        {"a=1&&b=2=3&c", {"a=1", "b=2=3"}     },
        {"a=&=1",        {"a=", "=1"}         },
        {"&&",           {}                   },
    };
    for (const auto& [argument, assignments] : kRows) {
        Lines expected;
        for (const std::string& assignment : assignments) expected.push_back(setting(assignment));
        clear_journal();
        EXPECT_EQ(0, set_bootconfig("set", argument));
        EXPECT_EQ(expected, journal());
    }
}

TEST_F(BootVariable, IsNotSetByAPairThatDoesNotFitNorByOtherActions) {
    const std::string fits = "n=" + std::string(257 - setting("n=").size(), 'v');
    const std::string argument = "a=1&-option=2&" + fits + "v&" + fits + "&b='" + fits + "&c=3";
    EXPECT_EQ(0, set_bootconfig("set", argument.c_str()));
    EXPECT_EQ((Lines{setting("a=1"), setting(fits), setting("c=3")}), journal());
    clear_journal();
    for (const char* other : {"a=1", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(0, set_bootconfig("default", other));
        EXPECT_EQ("set_bootconfig default action is not defined in this platform\n", out());
    }
    for (const char* action : {"", "SET", "sets", "se", static_cast<const char*>(nullptr)})
        EXPECT_EQ(0, set_bootconfig(action, "a=1"));
    EXPECT_EQ(0, set_bootconfig("set", nullptr));
    EXPECT_EQ(Lines{}, journal());
}

constexpr const char* kDiagCache = "/tmp/diag_flag";
constexpr const char* kMarker = "/tmp/factory_default_mode";

using BootFlags = BootVariable;

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
    EXPECT_EQ((Lines{setting("diag=0"), setting("diag=1"), setting("ftm=on")}), journal());
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

using SystemActions = BootVariable;

TEST_F(SystemActions, RestoreReportsTheToolsStatusAndRefusesPathsUnrun) {
    const std::string command = "/sbin/restorebackup ";
    const std::string longest(4096, 'p');
    answer(command + "failing", 0x100);
    for (const std::string& path :
         {std::string(), std::string(4300, 'p'), std::string("-option"), std::string("failing")})
        EXPECT_EQ(-1, restore_backup_config(path.c_str()));
    EXPECT_EQ(-1, restore_backup_config(nullptr));
    EXPECT_EQ(0, restore_backup_config(longest.c_str()));
    EXPECT_EQ((Lines{"$ " + command + "failing", "$ " + command + longest}), journal());
}

TEST_F(SystemActions, RebootAsksProcessOneToEndAndConstantsIgnoreArguments) {
    EXPECT_EQ(0, send_system_reboot_signal());
    EXPECT_EQ(0, platform_any_arguments());
    for (const int value : {0, INT32_MAX}) EXPECT_EQ(value, platform_preinit(value));
    EXPECT_EQ(Lines{"kill 1 15"}, journal());
}

}  // namespace
