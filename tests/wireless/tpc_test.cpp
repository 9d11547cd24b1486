// Transmit power control.
#include "profile/sample_radios.h"

namespace {

class Tpc : public harness::SampleRadios {};

TEST_F(Tpc, IsHandedToTheRadioWhereItIsEnabled) {
    const std::string set = "$2 /sbin/iwpriv rai0 set tpc";
    const std::string full(128, '7');
    const std::string too_long(128, '\'');
    const std::tuple<std::string, std::string, std::string> kRows[] = {
        {"1;id",   "$(id) %s", set + "_duty='1;id'\n" + set + "='$(id) %s'\n"        },
        {full,     full,       set + "_duty=" + full + '\n' + set + '=' + full + '\n'},
        {too_long, "5",        set + "=5\n"                                          },
    };
    host().hw.tpc_2g.enable = 0;
    for (const auto& [duty, value, lines] : kRows) {
        clear_journal();
        harness::put_text(host().hw.tpc_5g.duty, duty);
        harness::put_text(host().hw.tpc_5g.value, value);
        EXPECT_EQ(0, mtk_tpc_patch());
        EXPECT_EQ(lines, journal_text());
        EXPECT_EQ("MTK TPC FOR 5G : " + duty + " / " + value + "\n", err());
    }
}

}  // namespace
