#include "support/text.h"

#include <gtest/gtest.h>

#include <string>

#include "support/number.h"
#include "support/split.h"

namespace {

using platform::Split;
using platform::TextBuffer;
using namespace std::literals;

TEST(Text, HoldsOneByteLessThanItsBuffer) {
    TextBuffer<5> text;
    text.put("ab").put("cd");
    EXPECT_TRUE(text.ok());
    EXPECT_STREQ("abcd", text.c_str());
}

TEST(Text, LeavesOutWholeWhatDoesNotFitAndAllThatFollows) {
    TextBuffer<5> text;
    text.put("ab").put("cde").put("").put('f').put_decimal(1);
    EXPECT_FALSE(text.ok());
    EXPECT_EQ("ab", text.view());
    EXPECT_STREQ("ab", text.c_str());
}

TEST(Text, NeverWritesPastItsBuffer) {
    char room[8];
    memset(room, 'x', sizeof room);
    platform::Text(std::span(room).first(4)).put("123").put("4").put_hex(0xFFFF, 1);
    EXPECT_EQ("123\0xxxx"sv, std::string_view(room, sizeof room));
}

TEST(Text, WritesNumbers) {
    TextBuffer<99> text;
    text.put_decimal(INT64_MIN).put(' ').put_decimal(0).put(' ').put_hex(0xABC, 2).put(' ');
    text.put_hex_lower(0xDEADBEEF, 1).put(' ').put_hex(5, 2).put(' ').put_hex(0, 0);
    EXPECT_EQ("-9223372036854775808 0 ABC deadbeef 05 ", text.view());
}

TEST(CopyText, CutsToItsRoomAndLeavesTheBytesAfterTheEnd) {
    char room[6] = {'x', 'x', 'x', 'x', 'x', 'x'};
    platform::copy_text(std::span(room).first(4), "ab");
    EXPECT_EQ("ab\0xxx"sv, std::string_view(room, sizeof room));
    platform::copy_text(std::span(room).first(4), "abcdef");
    EXPECT_EQ("abc\0xx"sv, std::string_view(room, sizeof room));
    platform::copy_text(std::span(room).first(0), "z");
    EXPECT_EQ('a', room[0]);
}

TEST(FieldText, MayFillItsField) {
    const char full[3] = {'a', 'b', 'c'};
    const char ended[4] = {'a', '\0', 'c', 'd'};
    EXPECT_EQ("abc", platform::field_text(full));
    EXPECT_EQ("a", platform::field_text(ended));
}

TEST(HasPrefix, ComparesWholePrefixes) {
    EXPECT_TRUE(platform::has_prefix("ra0", "ra"));
    EXPECT_TRUE(platform::has_prefix("ra", ""));
    EXPECT_FALSE(platform::has_prefix("r", "ra"));
    EXPECT_FALSE(platform::has_prefix("Ra0", "ra"));
}

TEST(Split, GivesEveryPieceEmptyOnesIncluded) {
    const struct {
        std::string_view text;
        std::vector<std::string_view> pieces;
    } kRows[] = {
        {"",       {""}                  },
        {"a",      {"a"}                 },
        {"a&b",    {"a", "b"}            },
        {"&a&&b&", {"", "a", "", "b", ""}},
    };
    for (const auto& row : kRows) {
        std::vector<std::string_view> pieces;
        for (Split split(row.text, '&'); const auto piece = split.next();) pieces.push_back(*piece);
        EXPECT_EQ(row.pieces, pieces) << row.text;
    }
}

TEST(LeadingDigits, StopsAtTheFirstOtherCharacter) {
    const struct {
        std::string_view text;
        int32_t value;
    } kRows[] = {
        {"",                        0         },
        {"x1",                      0         },
        {"-1",                      0         },
        {" 1",                      0         },
        {"1x2",                     1         },
        {"007",                     7         },
        {"2147483647",              2147483647},
        {"2147483648",              2147483647},
        {"99999999999999999999999", 2147483647},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(row.value, platform::leading_digits(row.text)) << row.text;
}

}  // namespace
