#include <cstring>

#include "platform/flash.h"
#include "support/board.h"

namespace {

using harness::Lines;

class BootVariable : public harness::Board {
protected:
    // Reads the variable into the first bytes of a filled room of 12.
    int get(const char* name, int size) {
        room_ = std::string(12, 'x');
        return get_bootconfig(name, room_.data(), size);
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
    for (const char* name : {"name", "", static_cast<const char*>(nullptr), too_long.c_str()}) {
        EXPECT_EQ(0, get(name, 8));
        EXPECT_EQ(std::string(8, '\0') + "xxxx", room_);
    }
    for (const int size : {0, -1, INT32_MIN}) {
        EXPECT_EQ(0, get("name", size));
        EXPECT_EQ(std::string(12, 'x'), room_);
    }
    EXPECT_EQ(0, get_bootconfig("name", nullptr, 8));
    EXPECT_EQ(Lines{}, journal());
    EXPECT_EQ(1, get(too_long.c_str() + 1, 8));
    answer("/sbin/uboot_env -g '$x;'", "on\n");
    EXPECT_EQ(1, get("$x;", 1));
    EXPECT_EQ('\0' + std::string(11, 'x'), room_);
    EXPECT_EQ("$< /sbin/uboot_env -g '$x;'", journal().back());
}

class SetBootconfig : public harness::Board {
protected:
    static std::string setting(const std::string& assignment) {
        return "$ /sbin/uboot_env -s " + assignment + " | /sbin/mtd write - Config";
    }
};

TEST_F(SetBootconfig, RunsTheToolForEachPairAndReportsNoFailure) {
    on_command = [](const std::string&) { return 0x100; };
    const std::pair<const char*, Lines> kRows[] = {
        {"b=1&a=2&b=3",              {"b=1", "a=2", "b=3"}                      },
        {"a=1&&b=2=3&c",             {"a=1", "b=2=3"}                           },
        {"a=&=1",                    {"a=", "=1"}                               },
        {"&&",                       {}                                         },
        {"a b=it's&a=$(id)`id`\"$x", {R"('a b'='it'\''s')", "a='$(id)`id`\"$x'"}},
        {"a;b=c|d>e&a=b\nc\\",       {"'a;b'='c|d>e'", "a='b\nc\\'"}            },
    };
    for (const auto& [argument, assignments] : kRows) {
        Lines expected;
        for (const std::string& assignment : assignments) expected.push_back(setting(assignment));
        clear_journal();
        EXPECT_EQ(0, set_bootconfig("set", argument));
        EXPECT_EQ(expected, journal());
    }
}

TEST_F(SetBootconfig, RunsNothingForAPairThatDoesNotFitNorForOtherActions) {
    fail_nth("system", 4);
    const std::string fits = "n=" + std::string(257 - setting("n=").size(), 'v');
    const std::string argument = "a=1&" + fits + "v&" + fits + "&b='" + fits + "&c=3";
    EXPECT_EQ(0, set_bootconfig("set", argument.c_str()));
    EXPECT_EQ((Lines{setting("a=1"), setting(fits), setting("c=3")}), journal());
    EXPECT_EQ(0, set_bootconfig("set", "a=1"));
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

}  // namespace
