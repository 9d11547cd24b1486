#include <cstring>

#include "platform/wlmap.h"
#include "support/board.h"

namespace {

using harness::Lines;

class InterfaceNames : public harness::Board {};

TEST_F(InterfaceNames, OfEveryWlMode) {
    const struct {
        int32_t wl_mode;
        const char* main_ifname;
        const char* client_ifname;
        const char* profile_path;
    } kRows[] = {
        {0,         "ra0",  "apcli0",  "/etc/wireless/radio0.dat"},
        {1,         "rai0", "apclii0", "/etc/wireless/radio1.dat"},
        {2,         "ra0",  "apcli0",  "/etc/wireless/radio0.dat"},
        {-1,        "ra0",  "apcli0",  "/etc/wireless/radio0.dat"},
        {INT32_MIN, "ra0",  "apcli0",  "/etc/wireless/radio0.dat"},
        {999,       "band", "apcli0",  "/etc/wireless/radio0.dat"},
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
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(InterfaceNames, OfAnUnknownKeyAreEmptyWithoutAMessage) {
    write_l1profile("INDEX0_other=1\n");
    EXPECT_STREQ("", get_wl_ifname_by_wlmode(0));
    EXPECT_STREQ("0", get_wl_bridge_ifname_by_wlmode(0));
    EXPECT_STREQ("", get_racfg_filename(0));
    EXPECT_STREQ("3", get_wl_ifname(3));
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(InterfaceNames, StayUntilTheNextLookupOfTheirKind) {
    const char* const main_ifname = get_wl_ifname_by_wlmode(0);
    const char* const client_ifname = get_wl_bridge_ifname_by_wlmode(1);
    const char* const path = get_racfg_filename(1);
    const char* const bss_ifname = get_wl_ifname(0x10002);
    char buffer[32];
    wireless_api_get_ifname(1, buffer);
    get_wl_idx_by_ifname("rai1");
    EXPECT_EQ((Lines{"ra0", "apclii0", "/etc/wireless/radio1.dat", "rai2"}),
              (Lines{main_ifname, client_ifname, path, bss_ifname}));
    EXPECT_EQ(main_ifname, get_wl_ifname_by_wlmode(1));
    EXPECT_STREQ("rai0", main_ifname);
}

TEST_F(InterfaceNames, AreZeroBeyondTheirEnd) {
    write_l1profile("INDEX0_main_ifname=" + std::string(127, 'm') + "\nINDEX1_main_ifname=r\n");
    get_wl_ifname_by_wlmode(0);
    const std::string_view room(get_wl_ifname_by_wlmode(1), 128);
    EXPECT_EQ("r" + std::string(127, '\0'), room);
}

TEST_F(InterfaceNames, TheClientPrefixIsCutSoThatItsNumberFits) {
    write_l1profile("INDEX0_apcli_ifname=" + std::string(127, 'c') + "\n");
    EXPECT_EQ(std::string(126, 'c') + "0", get_wl_bridge_ifname_by_wlmode(0));
}

struct BssName {
    const char* name;
    uint32_t wl_index;
    const char* ifname;
};
void PrintTo(const BssName& row, std::ostream* os) {
    *os << row.wl_index;
}

class BssIfname : public harness::Board, public testing::WithParamInterface<BssName> {};

TEST_P(BssIfname, IsPrefixAndNumber) {
    char ifname[33];
    memset(ifname, 'x', sizeof ifname);
    EXPECT_EQ(1, wireless_api_get_ifname(GetParam().wl_index, ifname));
    EXPECT_STREQ(GetParam().ifname, ifname);
    EXPECT_EQ('x', ifname[strlen(ifname) + 1]);
    EXPECT_STREQ(GetParam().ifname, get_wl_ifname(GetParam().wl_index));
}

INSTANTIATE_TEST_SUITE_P(, BssIfname,
                         testing::ValuesIn(std::initializer_list<BssName>{
                             {"FirstBss",      0,          "ra0"     },
                             {"FourthBss",     3,          "ra3"     },
                             {"SecondRadio",   65538,      "rai2"    },
                             {"LargestNumber", 0x1FFFF,    "rai65535"},
                             {"UnknownRadio",  0x20001,    "ra1"     },
                             {"BandSteering",  999 << 16,  "ra0"     },
                             {"LargestIndex",  0xFFFFFFFF, "ra65535" },
}),
                         harness::CaseName());

TEST_F(InterfaceNames, OfABssAreRefusedFrom32CharactersOn) {
    const std::string longest(26, 'p');
    write_l1profile("INDEX0_ext_ifname=" + longest + "\nINDEX1_ext_ifname=" + longest + "q\n");
    char ifname[32] = "untouched";
    EXPECT_EQ(0, wireless_api_get_ifname(0x1FFFF, ifname));
    EXPECT_STREQ("untouched", ifname);
    EXPECT_STREQ("", get_wl_ifname(0x1FFFF));
    EXPECT_EQ(longest + "q9999", get_wl_ifname(0x10000 + 9999));
    EXPECT_EQ(1, wireless_api_get_ifname(0xFFFF, ifname));
    EXPECT_EQ(longest + "65535", ifname);
    EXPECT_EQ(0, wireless_api_get_ifname(0, nullptr));
}

struct IndexOfName {
    const char* name;
    const char* ifname;
    int32_t wl_index;
    int32_t wl_mode;
};
void PrintTo(const IndexOfName& row, std::ostream* os) {
    *os << row.ifname;
}

class WlIndex : public harness::Board, public testing::WithParamInterface<IndexOfName> {};

TEST_P(WlIndex, IsFoundByPrefixAndNumber) {
    EXPECT_EQ(GetParam().wl_index, get_wl_idx_by_ifname(GetParam().ifname));
    EXPECT_EQ(GetParam().wl_mode, get_wl_mode_by_ifname2(GetParam().ifname));
}

INSTANTIATE_TEST_SUITE_P(, WlIndex,
                         testing::ValuesIn(std::initializer_list<IndexOfName>{
                             {"FirstBss",             "ra0",    0,     0    },
                             {"FourthBss",            "ra3",    3,     0    },
                             {"SecondRadio",          "rai1",   65537, 1    },
                             {"TwoDigits",            "ra10",   10,    0    },
                             {"TextAfterTheNumber",   "ra1x9",  1,     0    },
                             {"LeadingZero",          "rai02",  65538, 1    },
                             {"RepeaterClient",       "apcli0", -1,    65535},
                             {"OtherCase",            "RA0",    -1,    65535},
                             {"LongerPrefix",         "raii0",  -1,    65535},
                             {"StationOfAClientLink", "ra4096", 4096,  0    },
                             {"NumberAlone",          "1",      -1,    65535},
                             {"NoDigit",              "eth",    0,     0    },
                             {"Bridge",               "br",     0,     0    },
                             {"Empty",                "",       0,     0    },
}),
                         harness::CaseName());

TEST_F(InterfaceNames, AreComparedInTheirFirst31Characters) {
    const std::string prefix(29, 'p');
    write_l1profile("INDEX0_ext_ifname=ra\nINDEX1_ext_ifname=" + prefix + "\n");
    EXPECT_EQ(65536 + 12, get_wl_idx_by_ifname((prefix + "12").c_str()));
    EXPECT_EQ(65536 + 12, get_wl_idx_by_ifname((prefix + "129").c_str()));
    EXPECT_EQ(0, get_wl_idx_by_ifname(std::string(31, 'p').append("1").c_str()));
}

TEST_F(InterfaceNames, AreLookedForInTheOrderOfTheRadioList) {
    write_l1profile("INDEX0_ext_ifname=ra\nINDEX1_ext_ifname=ra\n");
    EXPECT_EQ(2, get_wl_idx_by_ifname("ra2"));
    host().wl_modes = {1, 0};
    EXPECT_EQ(65538, get_wl_idx_by_ifname("ra2"));
    host().wl_modes = {5};
    EXPECT_EQ((5 << 16) + 2, get_wl_idx_by_ifname("ra2"));
    host().wl_modes = {};
    EXPECT_EQ(-1, get_wl_idx_by_ifname("ra2"));
    EXPECT_EQ(-1, get_wl_idx_by_ifname(nullptr));
}

}  // namespace
