#include <cstring>

#include "platform/wlmap.h"
#include "support/board.h"

namespace {

using harness::Lines;

class InterfaceNames : public harness::Board {
protected:
    ~InterfaceNames() override { EXPECT_EQ(Lines{}, journal()); }
};

TEST_F(InterfaceNames, OfEveryWlMode) {
    const struct {
        int32_t wl_mode;
        const char *main_ifname, *client_ifname, *profile_path;
    } kRows[] = {
        {0,   "ra0",  "apcli0",  "/etc/wireless/radio0.dat"},
        {1,   "rai0", "apclii0", "/etc/wireless/radio1.dat"},
        {2,   "ra0",  "apcli0",  "/etc/wireless/radio0.dat"},
        {-1,  "ra0",  "apcli0",  "/etc/wireless/radio0.dat"},
        {999, "band", "apcli0",  "/etc/wireless/radio0.dat"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.wl_mode);
        EXPECT_STREQ(row.main_ifname, get_wl_ifname_by_wlmode(row.wl_mode));
        EXPECT_STREQ(row.client_ifname, get_wl_bridge_ifname_by_wlmode(row.wl_mode));
        EXPECT_STREQ(row.profile_path, get_racfg_filename(row.wl_mode));
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
    const std::pair<uint32_t, const char*> kRows[] = {
        {0,          "ra0"     },
        {65538,      "rai2"    },
        {0x1FFFF,    "rai65535"},
        {0x20001,    "ra1"     },
        {0xFFFFFFFF, "ra65535" },
    };
    for (const auto& [wl_index, name] : kRows) {
        char ifname[33];
        memset(ifname, 'x', sizeof ifname);
        EXPECT_EQ(1, wireless_api_get_ifname(wl_index, ifname));
        EXPECT_STREQ(name, ifname);
        EXPECT_EQ('x', ifname[strlen(ifname) + 1]);
        EXPECT_STREQ(name, get_wl_ifname(wl_index));
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
    const struct {
        const char* ifname;
        int32_t wl_index, wl_mode;
    } kRows[] = {
        {"ra0",    0,     0    },
        {"rai1",   65537, 1    },
        {"ra1x9",  1,     0    },
        {"rai02",  65538, 1    },
        {"ra4096", 4096,  0    },
        {"apcli0", -1,    65535},
        {"raii0",  -1,    65535},
        {"r0",     -1,    65535},
        {"1",      -1,    65535},
        {"eth",    0,     0    },
        {"",       0,     0    },
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(row.wl_index, get_wl_idx_by_ifname(row.ifname)) << row.ifname;
        EXPECT_EQ(row.wl_mode, get_wl_mode_by_ifname2(row.ifname)) << row.ifname;
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
    for (const auto& [list, wl_index] : std::initializer_list<std::pair<std::vector<int>, int>>{
             {{1, 0}, 65538        },
             {{5},    (5 << 16) + 2},
             {{},     -1           }
    }) {
        host().wl_modes = list;
        EXPECT_EQ(wl_index, get_wl_idx_by_ifname("ra2"));
    }
}

}  // namespace
