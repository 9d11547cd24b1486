#include "support/command.h"

#include <gtest/gtest.h>

#include <string>

#include "support/case_name.h"

namespace {

using platform::Command;
using namespace std::literals;

struct Escape {
    const char* name;
    std::string_view text;
    std::string outside;  // as a word of its own
    std::string inside;   // within double quotes
};
void PrintTo(const Escape& row, std::ostream* os) {
    *os << testing::PrintToString(row.text);
}

class CommandEscape : public testing::TestWithParam<Escape> {};

TEST_P(CommandEscape, FitsThePlaceOfTheText) {
    const Escape& row = GetParam();
    EXPECT_EQ("a " + row.outside + " b", Command<99>("a %s b", row.text).text() + ""s);
    EXPECT_EQ("a \"" + row.inside + "\" b", Command<99>("a \"%s\" b", row.text).text() + ""s);
}

constexpr std::string_view kHarmless =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./:,=+@%";

INSTANTIATE_TEST_SUITE_P(
    , CommandEscape,
    testing::ValuesIn(std::initializer_list<Escape>{
        {"Harmless",     kHarmless,         std::string(kHarmless), std::string(kHarmless)},
        {"Empty",        "",                "",                     ""                    },
        {"Blanks",       "a b\tc",          "'a b\tc'",             "a b\tc"              },
        {"SingleQuotes", "it's'",           R"('it'\''s'\''')",     "it's'"               },
        {"DoubleQuotes", R"("x")",          R"('"x"')",             R"(\"x\")"            },
        {"Dollar",       "$(id)${x}",       "'$(id)${x}'",          R"(\$(id)\${x})"      },
        {"BackQuotes",   "`id`",            "'`id`'",               R"(\`id\`)"           },
        {"Backslashes",  R"(a\nb\)",        R"('a\nb\')",           R"(a\\nb\\)"          },
        {"Operators",    "a;b&c|d<e>f(g)",  "'a;b&c|d<e>f(g)'",     "a;b&c|d<e>f(g)"      },
        {"Patterns",     "~*?[x]{y}!#",     "'~*?[x]{y}!#'",        "~*?[x]{y}!#"         },
        {"LineEnds",     "a\nb\r",          "'a\nb\r'",             "a\nb\r"              },
        {"HighBytes",    "caf\xC3\xA9\xFF", "'caf\xC3\xA9\xFF'",    "caf\xC3\xA9\xFF"     },
}),
    harness::CaseName());

TEST(Command, KnowsWhereTheQuotesOfItsFormatEnd) {
    EXPECT_STREQ("x '$1' \"y \\$2 \" '$3'",
                 Command<99>("x %s \"y %s \" %s", "$1", "$2", "$3").text());
}

TEST(Command, QuotesOfATextDoNotCountAsItsOwn) {
    EXPECT_STREQ("x '\"' '$'", Command<99>("x %s %s", "\"", "$").text());
}

TEST(Command, WritesNumbers) {
    EXPECT_STREQ("p 0 -7 2147483647", Command<99>("p %d %d %d", 0, -7, INT32_MAX).text());
    EXPECT_STREQ("w 00ff0a",
                 Command<99>("w %02x%02x%02x", uint8_t{0}, uint8_t{255}, uint8_t{10}).text());
}

TEST(Command, ANullTextReadsAsEmpty) {
    EXPECT_STREQ("get ", Command<99>("get %s", static_cast<const char*>(nullptr)).text());
}

TEST(Command, IsWholeUpToOneByteBelowItsBuffer) {
    EXPECT_STREQ("a 1234567", Command<10>("a %s", "1234567").text());
    EXPECT_EQ(nullptr, Command<10>("a %s", "12345678").text());
    EXPECT_EQ(nullptr, Command<10>("a %s z", "1234567").text());
}

TEST(Command, CountsTheEscapesIntoItsLength) {
    EXPECT_STREQ("a '$2345'", Command<10>("a %s", "$2345").text());
    EXPECT_EQ(nullptr, Command<10>("a %s", "$23456").text());
    EXPECT_EQ(nullptr, Command<10>("a \"%s\"", "$$$").text());
}

TEST(Command, DoesNotExistForATextWithANul) {
    EXPECT_EQ(nullptr, Command<99>("a %s", "b\0c"sv).text());
    EXPECT_EQ(nullptr, Command<99>("a \"%s\" %d", "\0"sv, 1).text());
}

TEST(Command, ThatDoesNotExistIsNotRun) {
    EXPECT_EQ(-1, platform::run_shell(Command<4>("true")));
}

}  // namespace
