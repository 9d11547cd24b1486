// UUID texts and their hexadecimal pairs.
#include <array>

#include "platform/wps.h"
#include "support/board.h"
#include "support/rows.h"

namespace {

using Uuid = std::array<uint8_t, 16>;

constexpr Uuid kUuid = {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0,
                        0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0};
const std::string kText = "12345678-9abc-DEF0-1234-56789abcdef0";

TEST(Uuid, IsReadFromFiveGroups) {
    for (const std::string& text : harness::Lines{kText, "-" + kText + std::string(90, '7'),
                                                  "1-2-3-4-56789abcdef0123456789abcdef0",
                                                  "123456789abcdef0--123456789abc--d-e---f0"}) {
        Uuid uuid = {};
        EXPECT_EQ(0, trans_uuid_str_to_hex(text.c_str(), uuid.data()));
        EXPECT_EQ(kUuid, uuid) << text;
    }
}

TEST(Uuid, IsLeftAloneByOtherTexts) {
    for (const std::string& text : harness::Lines{"", kText.substr(0, 23), kText.substr(0, 24),
                                                  "-----", kText + std::string(92, '7')}) {
        Uuid uuid = kUuid;
        EXPECT_EQ(-1, trans_uuid_str_to_hex(text.c_str(), uuid.data())) << text;
        EXPECT_EQ(kUuid, uuid);
    }
}

TEST(Uuid, PairsAreHexadecimalOfEitherCase) {
    EXPECT_EQ(0, convert_2byte_hex(""));
    for (const auto& [text, value] :
         harness::rows<std::string, int>("00 0  fF 255  a1b2 161  0g 0  0x1 0"))
        EXPECT_EQ(value, convert_2byte_hex(text.c_str())) << text;
}

}  // namespace
