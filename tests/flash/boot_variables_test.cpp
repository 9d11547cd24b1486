#include <cstring>

#include "platform/flash.h"
#include "support/board.h"

namespace {

using harness::Lines;

std::string setting(const std::string& assignment) {
    return "$ /sbin/uboot_env -s " + assignment + " | /sbin/mtd write - Config";
}

struct ToolOutput {
    const char* name;
    const char* output;
    const char* value;  // as read into 8 bytes
};
void PrintTo(const ToolOutput& row, std::ostream* os) {
    *os << testing::PrintToString(row.output);
}

class BootVariable : public harness::Board {
protected:
    int get(const char* name, int size) {
        memset(value_, 'x', sizeof value_);
        return get_bootconfig(name, value_, size);
    }
    std::string_view room() const { return {value_, sizeof value_}; }

private:
    char value_[12];
};
class BootVariableValue : public BootVariable, public testing::WithParamInterface<ToolOutput> {};

TEST_P(BootVariableValue, IsTheFirstLineInAClearedBuffer) {
    answer("/sbin/uboot_env -g name", GetParam().output);
    EXPECT_EQ(1, get("name", 8));
    std::string expected = GetParam().value;
    expected.resize(8, '\0');
    EXPECT_EQ(expected + "xxxx", room());
    EXPECT_EQ(Lines{"$< /sbin/uboot_env -g name"}, journal());
}

INSTANTIATE_TEST_SUITE_P(, BootVariableValue,
                         testing::ValuesIn(std::initializer_list<ToolOutput>{
                             {"OneLine",           "on\n",       "on"     },
                             {"NoLineEnd",         "on",         "on"     },
                             {"Unset",             "",           ""       },
                             {"EmptyLine",         "\nx",        ""       },
                             {"SecondLineIgnored", "a\nb\n",     "a"      },
                             {"BlanksStay",        " a \n",      " a "    },
                             {"FillsTheBuffer",    "1234567\n",  "1234567"},
                             {"CutToTheBuffer",    "12345678\n", "1234567"},
}),
                         harness::CaseName());

TEST_F(BootVariable, IsEmptyWhenTheToolCannotStart) {
    fail_next("popen");
    EXPECT_EQ(0, get("name", 8));
    EXPECT_EQ(std::string(8, '\0') + "xxxx", room());
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootVariable, NeedsRoom) {
    for (const int size : {0, -1, INT32_MIN}) {
        EXPECT_EQ(0, get("name", size));
        EXPECT_EQ(std::string(12, 'x'), room());
    }
    EXPECT_EQ(0, get_bootconfig("name", nullptr, 8));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootVariable, NeedsAName) {
    for (const char* name : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(0, get(name, 8));
        EXPECT_EQ(std::string(8, '\0') + "xxxx", room());
    }
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(BootVariable, OfOneByteIsAlwaysEmpty) {
    answer("/sbin/uboot_env -g name", "on\n");
    EXPECT_EQ(1, get("name", 1));
    EXPECT_EQ('\0' + std::string(11, 'x'), room());
}

TEST_F(BootVariable, NamesAreEscapedForTheShell) {
    EXPECT_EQ(1, get("a b;c", 8));
    EXPECT_EQ(1, get("$x", 8));
    EXPECT_EQ((Lines{"$< /sbin/uboot_env -g 'a b;c'", "$< /sbin/uboot_env -g '$x'"}), journal());
}

TEST_F(BootVariable, WithANameTooLongForTheCommandIsNotAsked) {
    const std::string longest(255 - strlen("/sbin/uboot_env -g "), 'n');
    EXPECT_EQ(1, get(longest.c_str(), 8));
    EXPECT_EQ(0, get((longest + "n").c_str(), 8));
    EXPECT_EQ(std::string(8, '\0') + "xxxx", room());
    EXPECT_EQ(Lines{"$< /sbin/uboot_env -g " + longest}, journal());
}

struct Assignment {
    const char* name;
    const char* argument;
    Lines words;  // the tool's argument, one for each command
};
void PrintTo(const Assignment& row, std::ostream* os) {
    *os << testing::PrintToString(row.argument);
}

class SetBootconfig : public harness::Board, public testing::WithParamInterface<Assignment> {};

TEST_P(SetBootconfig, RunsTheToolForEachPair) {
    EXPECT_EQ(0, set_bootconfig("set", GetParam().argument));
    Lines expected;
    for (const std::string& words : GetParam().words) expected.push_back(setting(words));
    EXPECT_EQ(expected, journal());
}

INSTANTIATE_TEST_SUITE_P(, SetBootconfig,
                         testing::ValuesIn(std::initializer_list<Assignment>{
                             {"OnePair",                  "a=1",           {"a=1"}              },
                             {"InOrder",                  "b=1&a=2&b=3",   {"b=1", "a=2", "b=3"}},
                             {"SkipsPiecesWithoutEquals", "a=1&&b=2=3&c",  {"a=1", "b=2=3"}     },
                             {"FirstEqualsParts",         "a=b c=d",       {"a='b c=d'"}        },
                             {"EmptyValue",               "a=&b=2",        {"a=", "b=2"}        },
                             {"EmptyName",                "=1",            {"=1"}               },
                             {"Empty",                    "",              {}                   },
                             {"SeparatorsOnly",           "&&",            {}                   },
                             {"Blanks",                   "a b=c  d",      {"'a b'='c  d'"}     },
                             {"SingleQuote",              "a=it's",        {R"(a='it'\''s')"}   },
                             {"DoubleQuotes",             "a=\"x\"",       {R"(a='"x"')"}       },
                             {"Substitutions",            "a=$(id)`id`$x", {"a='$(id)`id`$x'"}  },
                             {"Operators",                "a;b=c|d>e",     {"'a;b'='c|d>e'"}    },
                             {"LineFeed",                 "a=b\nc",        {"a='b\nc'"}         },
                             {"Backslash",                "a=\\",          {"a='\\'"}           },
}),
                         harness::CaseName());

TEST_F(SetBootconfig, RunsNothingForAPairThatDoesNotFit) {
    const std::string longest(255 - (setting("n=").size() - 2), 'v');
    const std::string fits = "n=" + longest;
    const std::string argument = "a=1&" + fits + "v&" + fits + "&b='" + longest + "&c=3";
    EXPECT_EQ(0, set_bootconfig("set", argument.c_str()));
    EXPECT_EQ((Lines{setting("a=1"), setting(fits), setting("c=3")}), journal());
}

TEST_F(SetBootconfig, DefaultOnlyPrintsANotice) {
    const char* const notice = "set_bootconfig default action is not defined in this platform\n";
    EXPECT_EQ(0, set_bootconfig("default", "a=1"));
    EXPECT_EQ(notice, out());
    EXPECT_EQ(0, set_bootconfig("default", nullptr));
    EXPECT_EQ(notice, out());
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(SetBootconfig, DoesNothingForOtherActions) {
    for (const char* action : {"", "SET", "sets", "se", "get"})
        EXPECT_EQ(0, set_bootconfig(action, "a=1"));
    EXPECT_EQ(0, set_bootconfig("set", nullptr));
    EXPECT_EQ(0, set_bootconfig(nullptr, "a=1"));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(SetBootconfig, ReportsNoFailure) {
    on_command = [](const std::string&) { return 0x100; };
    EXPECT_EQ(0, set_bootconfig("set", "a=1"));
    fail_next("system");
    EXPECT_EQ(0, set_bootconfig("set", "a=1"));
    EXPECT_EQ(Lines{setting("a=1")}, journal());
}

}  // namespace
