// Transmit power control.
#include "profile/sample_radios.h"

namespace {

using harness::Lines;

class Tpc : public harness::SampleRadios {};

TEST_F(Tpc, IsHandedToTheRadioWhereItIsEnabled) {
    const std::string set = "$2 /sbin/iwpriv rai0 set ";
    const std::string full(128, '7');
    const std::string too_long(128, '\'');
    const std::tuple<std::string, std::string, Lines> kRows[] = {
        {"9:8",    "7:6",      {set + "tpc_duty=9:8", set + "tpc=7:6"}          },
        {full,     full,       {set + "tpc_duty=" + full, set + "tpc=" + full}  },
        {"1;id",   "$(id) %s", {set + "tpc_duty='1;id'", set + "tpc='$(id) %s'"}},
        {too_long, "5",        {set + "tpc=5"}                                  },
    };
    host().hw.tpc_2g.enable = 0;
    for (const auto& [duty, value, lines] : kRows) {
        clear_journal();
        harness::put_text(host().hw.tpc_5g.duty, duty);
        harness::put_text(host().hw.tpc_5g.value, value);
        EXPECT_EQ(0, mtk_tpc_patch());
        EXPECT_EQ(lines, journal());
        EXPECT_EQ("MTK TPC FOR 5G : " + duty + " / " + value + "\n", err());
    }
}

}  // namespace
