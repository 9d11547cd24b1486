#include "platform/frame.h"

#include <algorithm>

#include "tests/support/board.h"

namespace {

using harness::Lines;

class PlatformDriver : public harness::Board {};

TEST_F(PlatformDriver, IsTheExportedObjectWithItsFourthSlotSet) {
    const platform_driver* const driver = platform_get_drv();
    const auto is_null = [](platform_slot slot) { return slot == nullptr; };
    EXPECT_TRUE(std::ranges::all_of(driver->reserved0, is_null));
    EXPECT_NE(nullptr, driver->refresh_non_ipv4_input_rule);
    EXPECT_TRUE(std::ranges::all_of(driver->reserved1, is_null));
    EXPECT_EQ(&platform_drv, driver);
    EXPECT_EQ(driver, platform_get_drv());
}

TEST_F(PlatformDriver, DeletesTheRuleBeforeItInsertsItAndReportsTheInsertAlone) {
    answer("ebtables -D INPUT -p ! IPv4 -j ACCEPT", 0xFF00);
    EXPECT_EQ(0, platform_get_drv()->refresh_non_ipv4_input_rule());
    EXPECT_EQ((Lines{"$ ebtables -D INPUT -p ! IPv4 -j ACCEPT",
                     "$ ebtables -I INPUT -p ! IPv4 -j ACCEPT"}),
              journal());
    answer("ebtables -I INPUT -p ! IPv4 -j ACCEPT", 0x0100);
    EXPECT_EQ(0x0100, platform_get_drv()->refresh_non_ipv4_input_rule());
    fail_nth("system", 2);
    EXPECT_EQ(-1, platform_get_drv()->refresh_non_ipv4_input_rule());
}

}  // namespace
