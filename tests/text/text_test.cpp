#include "src/support/text.h"

#include <gtest/gtest.h>

#include <vector>

#include "src/support/number.h"
#include "src/support/split.h"

namespace {

using platform::Split;
using namespace std::literals;

TEST(Text, LeavesOutWholeWhatDoesNotFitAndAllThatFollows) {
    platform::TextBuffer<5> text;
    text.put("ab").put("cd");
    EXPECT_TRUE(text.ok());
    EXPECT_STREQ("abcd", text.c_str());
    text.put('e').put("").put_decimal(1);
    EXPECT_FALSE(text.ok());
    EXPECT_EQ("abcd", text.view());
}

TEST(Text, NeverWritesPastItsBuffer) {
    char room[] = "xxxxxxx";
    platform::Text(std::span(room).first(4)).put("12").put("34").put("3").put_hex(0xFFFF, 1);
    EXPECT_EQ("12\0xxxx\0"sv, std::string_view(room, sizeof room));
}

TEST(Text, WritesNumbers) {
    platform::TextBuffer<99> text;
    text.put_decimal(INT64_MIN).put(' ').put_decimal(0).put(' ').put_hex(0xABC, 2).put(' ');
    text.put_hex_lower(0xDEADBEEF, 1).put(' ').put_hex(5, 2);
    EXPECT_EQ("-9223372036854775808 0 ABC deadbeef 05", text.view());
}

TEST(CopyText, CutsToItsRoomAndLeavesTheBytesAfterTheEnd) {
    char room[] = "xxxxx";
    platform::copy_text(std::span(room).first(4), "ab");
    EXPECT_EQ("ab\0xx\0"sv, std::string_view(room, sizeof room));
    platform::copy_text(std::span(room).first(4), "abcdef");
    EXPECT_EQ("abc\0x\0"sv, std::string_view(room, sizeof room));
}

TEST(FieldText, MayFillItsField) {
    const char full[3] = {'a', 'b', 'c'};
    const char ended[4] = {'a', '\0', 'c', 'd'};
    EXPECT_EQ("abc", platform::field_text(full));
    EXPECT_EQ("a", platform::field_text(ended));
}

TEST(Split, GivesEveryPieceEmptyOnesIncluded) {
    const std::pair<std::string_view, std::vector<std::string_view>> rows[] = {
        {"",       {""}                  },
        {"a",      {"a"}                 },
        {"&a&&b&", {"", "a", "", "b", ""}}
    };
    for (const auto& [text, expected] : rows) {
        std::vector<std::string_view> pieces;
        for (Split split(text, '&'); const auto piece = split.next();) pieces.push_back(*piece);
        EXPECT_EQ(expected, pieces);
    }
}

TEST(LeadingDigits, StopAtTheFirstOtherCharacterAndAtTheLargestNumber) {
    for (const char* text : {"", "-1", "x"}) EXPECT_EQ(0u, platform::leading_digits(text)) << text;
    EXPECT_EQ(1u, platform::leading_digits("1x2"));
    EXPECT_EQ(7u, platform::leading_digits("007"));
    EXPECT_EQ(UINT64_MAX - 1, platform::leading_digits("18446744073709551614"));
    EXPECT_EQ(std::nullopt, platform::leading_digits("18446744073709551616"));
}

TEST(LeadingDecimal, TakesBlanksAndASignAndKeepsTheLowWord) {
    for (const char* text : {"", "- 1"}) EXPECT_EQ(0, platform::leading_decimal(text)) << text;
    EXPECT_EQ(-45, platform::leading_decimal(" \t-45/-47"));
    EXPECT_EQ(7, platform::leading_decimal("+7"));
    EXPECT_EQ(INT32_MIN, platform::leading_decimal("-2147483648"));
    EXPECT_EQ(1, platform::leading_decimal("4294967297"));
    EXPECT_EQ(-1, platform::leading_decimal("9999999999999999999"));
    EXPECT_EQ(0, platform::leading_decimal("-9999999999999999999"));
}

}  // namespace
