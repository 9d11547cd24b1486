// Whole profiles, as the driver reads them, of both radios in configurations of daily life.
#include "platform/profile.h"
#include "tests/profile/sample_radios.h"

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

// The edits on disk that follow every generation, on their own.
class DiskUpdates : public harness::SampleRadios {};

TEST_F(DiskUpdates, TakeTheBrandFromTheModelName) {
    // What lies behind the name's end is no part of it.
    for (const std::string row : {"Quolex R2400=R2400", "QuolexR2400=2400", "Quolex =", "Quolex=",
                                  "quolex R2400=quolex R2400", "A Quolex R2400=A Quolex R2400"}) {
        const size_t end = row.find('=');
        harness::put_text(host().pi, row.substr(0, end) + '\0' + "behind");
        wsc_profile_update();
        for (const int wl_mode : {0, 1}) expect_keys(wl_mode, {"WscModelName" + row.substr(end)});
    }
    host().pi.fill('x');
    wsc_profile_update();
    expect_keys(0, {"WscModelName=" + std::string(host().pi.size() - 1, 'x')});
}

TEST_F(DiskUpdates, WriteTheElementFourTimes) {
    const std::string head = "10203040009F33102030009F33102032";
    const std::string digits = "6162636465666768696A6B6C6D6E6FFF";
    for (const size_t length : {0u, 1u, 15u, 16u}) {
        harness::put_text(host().element.text, std::string("abcdefghijklmno\xff", length));
        mtk_profile_update_for_easymesh();
        const std::string copy = head + digits.substr(0, 2 * length);
        for (const int wl_mode : {0, 1})
            expect_keys(wl_mode, {"KDX_IE_AP=" + copy + ';' + copy + ';' + copy + ';' + copy});
    }
}

TEST_F(DiskUpdates, AddTheSettingsOfEasyMesh) {
    host().easymesh = 1;
    host().journal_profile_edits = true;
    mtk_profile_update_for_easymesh();
    EXPECT_EQ(golden("easymesh_edits.journal"), journal_text());
}

// Some settings of the second radio do not ask the list.
TEST_F(DiskUpdates, OfEasyMeshReachARadioThatIsNotListed) {
    host().easymesh = 2;
    host().wl_modes = {0};
    mtk_profile_update_for_easymesh();
    expect_keys(1, {"AutoChannelSelect=3", "CountryRegionABand=13", "IgmpSnEnable", "HideSSID=0",
                    "KDX_IE_AP", "WscSerialNumber=12"});
    expect_keys(0, {"IgmpSnEnable=1;1;1;1", "HideSSID=1;1;1;1", "CountryRegion=0"});
}

}  // namespace
