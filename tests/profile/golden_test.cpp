// Whole profiles, as the driver reads them, of both radios in configurations of daily life.
#include "profile/sample_radios.h"

namespace {

class GoldenProfiles : public harness::SampleRadios {
protected:
    void expect_golden(const std::string& name) {
        EXPECT_EQ(golden(name + "_2g.dat"), read(harness::kProfilePath[0]));
        EXPECT_EQ(golden(name + "_5g.dat"), read(harness::kProfilePath[1]));
    }
};
class GoldenProfile : public GoldenProfiles, public testing::WithParamInterface<const char*> {};

TEST_F(GoldenProfiles, OfTheFactoryDefault) {
    host() = board::factory_state();
    EXPECT_EQ(0, init_mtk_wlif(0));
    EXPECT_EQ(0, init_mtk_wlif(1));
    expect_golden("factory");
    err();
}

TEST_P(GoldenProfile, HasEveryKeyInItsPlace) {
    load(GetParam());
    apply(0);
    apply(1);
    expect_golden(GetParam());
}

INSTANTIATE_TEST_SUITE_P(, GoldenProfile,
                         testing::Values("four_bss", "wep", "radius", "repeater", "easymesh"),
                         [](const auto& row) { return std::string(row.param); });

TEST_F(GoldenProfiles, AreEditedInOrder) {
    load("edits");
    host().journal_profile_edits = true;
    apply(0);
    EXPECT_EQ(golden("edits.journal"), journal_text("profile "));
}

}  // namespace
