// The edits on disk that follow every generation, on their own.
#include "platform/profile.h"

#include "profile/sample_radios.h"

namespace {

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
    host().easymesh = 1;
    host().wl_modes = {0};
    mtk_profile_update_for_easymesh();
    expect_keys(1, {"AutoChannelSelect=3", "CountryRegionABand=13", "IgmpSnEnable", "HideSSID=0",
                    "KDX_IE_AP", "WscSerialNumber=12"});
    expect_keys(0, {"IgmpSnEnable=1;1;1;1", "HideSSID=1;1;1;1", "CountryRegion=0"});
}

}  // namespace
