// Switch registers and the ends that they put to a process, PHY answers.
#include "switch/phy.h"

#include "switch/switch_board.h"

namespace {

using harness::Lines;

class Registers : public harness::SwitchBoard {};
using RegistersDeathTest = Registers;

TEST_F(Registers, AreReadAndWrittenBetweenInitAndFini) {
    registers[0x3100] = 0x56300;
    uint32_t value = 0;
    EXPECT_LE(0, switch_ioctl_init());
    EXPECT_EQ(0, reg_read(0x3100, &value));
    EXPECT_EQ(0x56300u, value);
    EXPECT_EQ(0, reg_write(0x80, 0x8004));
    EXPECT_EQ(0, reg_write_ioctl(0x3100, 0xFFFFFFFF));
    EXPECT_EQ(0, reg_read_ioctl(0x3100, &value));
    EXPECT_EQ(0xFFFFFFFF, value);
    EXPECT_EQ(0, switch_ioctl_fini());
    EXPECT_EQ(
        (Lines{"socket", "reg 3100", "reg 80 8004", "reg 3100 ffffffff", "reg 3100", "close"}),
        journal());
}

TEST_F(RegistersDeathTest, ARefusedRegisterEndsTheProcess) {
    uint32_t value = 0;
    const testing::ExitedWithCode ended(0);
    EXPECT_EXIT((fail_nth("socket", 1), switch_ioctl_init()), ended, "socket: Input/output error");
    fail_no_more();
    switch_ioctl_init();
    const auto refused = [this] { fail_nth("ioctl", 1); };
    EXPECT_EXIT((refused(), reg_read(0x3100, &value)), ended, "ioctl: Input/output error");
    EXPECT_EXIT((refused(), reg_write(0x3100, 0)), ended, "ioctl: Input/output error");
    switch_ioctl_fini();
}

TEST(PhyAnswer, IsTheHexadecimalNumberRightAfterTheLastEquals) {
    using platform::parse_phy_answer;
    EXPECT_EQ(0x796d, parse_phy_answer("value=0x796d\n"));
    EXPECT_EQ(0xABCDEF, parse_phy_answer("=0xABCDEF"));
    EXPECT_EQ(0x12, parse_phy_answer("a=b=0x12 rest"));
    for (const char* line : {"value= 0x12", "value=12", "value="})
        EXPECT_EQ(0, parse_phy_answer(line)) << line;
    for (const char* line : {"value 0x12", ""}) EXPECT_EQ(-1, parse_phy_answer(line)) << line;
}

}  // namespace
