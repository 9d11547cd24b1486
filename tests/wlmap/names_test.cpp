#include <cstring>
#include <sstream>

#include "platform/wlmap.h"
#include "tests/support/board.h"

namespace {

using harness::Lines;

class InterfaceNames : public harness::Board {
protected:
    ~InterfaceNames() override { EXPECT_EQ(Lines{}, journal()); }
};

TEST_F(InterfaceNames, OfEveryWlMode) {
    for (const char* row : {"0 ra0 apcli0 0", "1 rai0 apclii0 1", "2 ra0 apcli0 0",
                            "-1 ra0 apcli0 0", "999 band apcli0 0"}) {
        int wl_mode, radio;
        std::string main_ifname, client_ifname;
        std::istringstream(row) >> wl_mode >> main_ifname >> client_ifname >> radio;
        EXPECT_EQ(main_ifname, get_wl_ifname_by_wlmode(wl_mode));
        EXPECT_EQ(client_ifname, get_wl_bridge_ifname_by_wlmode(wl_mode));
        EXPECT_STREQ(harness::kProfilePath[radio], get_racfg_filename(wl_mode)) << row;
    }
}

TEST_F(InterfaceNames, OfBandSteeringNeedNoFile) {
    remove(harness::kL1ProfilePath);
    EXPECT_STREQ("band", get_wl_ifname_by_wlmode(999));
    EXPECT_EQ(999, get_wl_mode_by_ifname2("band"));
    EXPECT_EQ(0, get_wl_mode_by_ifname2(nullptr));
}

TEST_F(InterfaceNames, OfUnknownKeysAreEmptyWithoutAMessage) {
    write_l1profile("INDEX0_other=1\n");
    EXPECT_STREQ("", get_wl_ifname_by_wlmode(0));
    EXPECT_STREQ("0", get_wl_bridge_ifname_by_wlmode(0));
    EXPECT_STREQ("", get_racfg_filename(0));
    EXPECT_STREQ("3", get_wl_ifname(3));
}

TEST_F(InterfaceNames, StayUntilTheNextLookupOfTheirKind) {
    const char* const names[] = {get_wl_ifname_by_wlmode(0), get_wl_bridge_ifname_by_wlmode(1),
                                 get_racfg_filename(1), get_wl_ifname(0x10002)};
    get_wl_idx_by_ifname("rai1");
    EXPECT_EQ((Lines{"ra0", "apclii0", "/etc/wireless/radio1.dat", "rai2"}),
              Lines(std::begin(names), std::end(names)));
}

TEST_F(InterfaceNames, AreZeroBeyondTheirEndAndCutSoThatANumberFits) {
    const std::string long_text(127, 'c');
    write_l1profile("INDEX0_main_ifname=" + long_text + "\nINDEX0_apcli_ifname=" + long_text +
                    "\nINDEX1_main_ifname=r\n");
    EXPECT_EQ(long_text, get_wl_ifname_by_wlmode(0));
    EXPECT_EQ("r" + std::string(127, '\0'), std::string_view(get_wl_ifname_by_wlmode(1), 128));
    EXPECT_EQ(std::string(126, 'c') + "0", get_wl_bridge_ifname_by_wlmode(0));
}

TEST_F(InterfaceNames, OfABssArePrefixAndNumber) {
    for (const char* row :
         {"0 ra0", "65538 rai2", "131071 rai65535", "131073 ra1", "4294967295 ra65535"}) {
        uint32_t wl_index;
        std::string name;
        std::istringstream(row) >> wl_index >> name;
        char ifname[33];
        memset(ifname, 'x', sizeof ifname);
        EXPECT_EQ(1, wireless_api_get_ifname(wl_index, ifname));
        EXPECT_EQ(name, ifname);
        EXPECT_EQ('x', ifname[strlen(ifname) + 1]);
        EXPECT_EQ(name, get_wl_ifname(wl_index));
    }
}

TEST_F(InterfaceNames, OfABssAreRefusedFrom32CharactersOn) {
    const std::string prefix(26, 'p');
    write_l1profile("INDEX0_ext_ifname=" + prefix + "\nINDEX1_ext_ifname=" + prefix + "q\n");
    char ifname[32] = "untouched";
    EXPECT_EQ(0, wireless_api_get_ifname(0x1FFFF, ifname));
    EXPECT_STREQ("untouched", ifname);
    EXPECT_STREQ("", get_wl_ifname(0x1FFFF));
    EXPECT_EQ(prefix + "q9999", get_wl_ifname(0x10000 + 9999));
    EXPECT_EQ(1, wireless_api_get_ifname(0xFFFF, ifname));
    EXPECT_EQ(prefix + "65535", ifname);
    EXPECT_EQ(0, wireless_api_get_ifname(0, nullptr));
}

TEST_F(InterfaceNames, GiveTheirWlIndexAndMode) {
    for (const std::string row : {"ra0 0 0", "rai1 65537 1", "ra1x9 1 0", "rai02 65538 1",
                                  "ra4096 4096 0", "eth 0 0", "apcli0 -1 65535", "raii0 -1 65535",
                                  "r0 -1 65535", "1 -1 65535", "RA0 -1 65535", " 0 0"}) {
        const std::string ifname = row.substr(0, row.find(' '));
        int wl_index, wl_mode;
        std::istringstream(row.substr(ifname.size())) >> wl_index >> wl_mode;
        EXPECT_EQ(wl_index, get_wl_idx_by_ifname(ifname.c_str())) << row;
        EXPECT_EQ(wl_mode, get_wl_mode_by_ifname2(ifname.c_str())) << row;
    }
    EXPECT_EQ(-1, get_wl_idx_by_ifname(nullptr));
}

TEST_F(InterfaceNames, AreComparedInTheirFirst31Characters) {
    const std::string prefix(29, 'p');
    write_l1profile("INDEX0_ext_ifname=ra\nINDEX1_ext_ifname=" + prefix + "\n");
    EXPECT_EQ(65536 + 12, get_wl_idx_by_ifname((prefix + "12").c_str()));
    EXPECT_EQ(65536 + 12, get_wl_idx_by_ifname((prefix + "129").c_str()));
    EXPECT_EQ(0, get_wl_idx_by_ifname((prefix + "pp1").c_str()));
}

TEST_F(InterfaceNames, AreLookedForInTheOrderOfTheRadioList) {
    write_l1profile("INDEX0_ext_ifname=ra\nINDEX1_ext_ifname=ra\n");
    EXPECT_EQ(2, get_wl_idx_by_ifname("ra2"));
    const auto found_in = [](std::vector<int> list) {
        host().wl_modes = std::move(list);
        return get_wl_idx_by_ifname("ra2");
    };
    EXPECT_EQ(65538, found_in({1, 0}));
    EXPECT_EQ((5 << 16) + 2, found_in({5}));
    EXPECT_EQ(-1, found_in({}));
}

}  // namespace
