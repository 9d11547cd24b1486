#include "src/support/command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using platform::Command;
using namespace std::literals;

TEST(Command, EscapesATextForThePlaceWhereItStands) {
    const std::string harmless =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./:,=+@%";
    const struct {
        std::string text;
        std::string outside;  // as a word of its own
        std::string inside;   // within double quotes
    } rows[] = {
        {harmless,          harmless,            harmless              },
        {"",                "",                  ""                    },
        {"a b\tc\nd\r",     "'a b\tc\nd\r'",     "a b\tc\nd\r"         },
        {"it's'",           R"('it'\''s'\''')",  "it's'"               },
        {R"("x")",          R"('"x"')",          R"(\"x\")"            },
        {"$(id)${x}`id`",   "'$(id)${x}`id`'",   R"(\$(id)\${x}\`id\`)"},
        {R"(a\nb\)",        R"('a\nb\')",        R"(a\\nb\\)"          },
        {"a;b&c|d<e>f(g)",  "'a;b&c|d<e>f(g)'",  "a;b&c|d<e>f(g)"      },
        {"~*?[x]{y}!#",     "'~*?[x]{y}!#'",     "~*?[x]{y}!#"         },
        {"caf\xC3\xA9\xFF", "'caf\xC3\xA9\xFF'", "caf\xC3\xA9\xFF"     },
    };
    for (const auto& row : rows) {
        const std::string_view text = row.text;
        EXPECT_EQ("a " + row.outside + " b", Command<99>("a %s b", text).text() + ""s);
        EXPECT_EQ("a \"" + row.inside + "\" b", Command<99>("a \"%s\" b", text).text() + ""s);
    }
}

TEST(Command, KnowsItsOwnQuotesFromThoseOfATextAndNullFromNone) {
    EXPECT_STREQ(
        "x '\"' \"y \\$2 \" '$3' ",
        Command<99>("x %s \"y %s \" %s %s", "\"", "$2", "$3", static_cast<char*>(nullptr)).text());
}

TEST(Command, WritesNumbers) {
    EXPECT_STREQ("p 0 -7 2147483647", Command<99>("p %d %d %d", 0, -7, INT32_MAX).text());
    EXPECT_STREQ("w 00ff", Command<99>("w %02x%02x", uint8_t{0}, uint8_t{255}).text());
}

TEST(Command, IsWholeOrNotAtAll) {
    EXPECT_STREQ("a 1234567", Command<10>("a %s", "1234567").text());
    EXPECT_STREQ("a '$234567'", Command<10>("a %s", "$234567").text());  // escapes have own room
    EXPECT_STREQ("a \"\\$\\$\\$\"", Command<10>("a \"%s\"", "$$$").text());
    EXPECT_EQ(nullptr, Command<10>("a %s", "12345678").text());
    EXPECT_EQ(nullptr, Command<10>("a %s z", "1234567").text());
    EXPECT_EQ(nullptr, Command<10>("a %s", "$2345678").text());
    const std::string quotes(130, '\'');
    EXPECT_EQ(nullptr, Command<250>("a %s", std::string_view(quotes)).text());
    EXPECT_EQ(nullptr, Command<99>("a %s", "b\0c"sv).text());
    EXPECT_EQ(nullptr, Command<99>("a \"%s\" %d", "\0"sv, 1).text());
    EXPECT_EQ(-1, platform::run_shell(Command<4>("true")));
}

}  // namespace
