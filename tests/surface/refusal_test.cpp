// What functions that call nothing of the system make of a missing argument.
#include "platform/platform.h"
#include "tests/support/board.h"

namespace {

class Refusal : public harness::Board {};

TEST_F(Refusal, OfAMissingArgumentTouchesNothing) {
    const std::string untouched(1024, '#');
    std::string room = untouched;
    char* const out = room.data();
    ap_entry* const entry = reinterpret_cast<ap_entry*>(out);
    EXPECT_EQ(0, convert_2byte_hex(nullptr));
    EXPECT_EQ(1, get_kdx_devname(nullptr, out, 8));
    EXPECT_EQ(1, get_kdx_devname("Config", nullptr, 8));
    EXPECT_EQ(nullptr, get_one_line(nullptr, out, 8));
    EXPECT_EQ(0, get_run_led_op(nullptr));
    EXPECT_EQ(0, platform_wireless_set_led(nullptr, 1));
    EXPECT_EQ(0, rt61_get_wireless_link_speed(nullptr));
    EXPECT_EQ(3, set_quolex_helper_bss(nullptr, 3));
    EXPECT_EQ(0, set_run_led_op(nullptr));
    EXPECT_EQ(0, wireless_api_get_mbridge_status(nullptr, entry));
    EXPECT_EQ(0, wireless_api_get_mbridge_status("apcli0", nullptr));
    EXPECT_EQ(0, wireless_api_get_ssid(nullptr, out));
    EXPECT_EQ(0, wireless_api_get_ssid("apcli0", nullptr));
    EXPECT_EQ(untouched, room);
    EXPECT_EQ(harness::Lines{}, journal());
}

}  // namespace
