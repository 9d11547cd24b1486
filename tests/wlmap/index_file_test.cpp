// How the lines of the radio index file are read.
#include "platform/wlmap.h"
#include "support/board.h"
#include "wlmap/l1profile.h"

namespace {

using harness::Lines;

constexpr const char* kMissing = "ERROR: L1PROFILE not found\n";
constexpr const char* kMissingLogged = R"(syslog 1 "ERROR: L1PROFILE not found\n")";

struct IndexFile {
    const char* name;
    std::string text;
    std::string ifname;  // the main interface of radio 0 according to it
};
void PrintTo(const IndexFile& row, std::ostream* os) {
    *os << testing::PrintToString(row.text);
}

class L1Profile : public harness::Board {};
class L1ProfileLine : public L1Profile, public testing::WithParamInterface<IndexFile> {};

TEST_P(L1ProfileLine, GivesTheMainInterface) {
    write_l1profile(GetParam().text);
    EXPECT_EQ(GetParam().ifname, get_wl_ifname_by_wlmode(0));
    EXPECT_EQ(Lines{}, journal());
}

const std::string kKey = "INDEX0_main_ifname=";
const std::string k127(127, 'n');
const std::string k255(255, 'x');  // as much as is read at once

INSTANTIATE_TEST_SUITE_P(
    , L1ProfileLine,
    testing::ValuesIn(std::initializer_list<IndexFile>{
        {"Plain",                       "INDEX1_main_ifname=rai0\n" + kKey + "ra0\n",             "ra0"    },
        {"EmptyFile",                   "",                                                       ""       },
        {"EmptyValue",                  kKey + "\n",                                              ""       },
        {"NoLineEndAtTheEnd",           kKey + "ra0",                                             "ra0"    },
        {"FirstOfTwo",                  kKey + "ra0\n" + kKey + "ra5\n",                          "ra0"    },
        {"CommentAbove",                "#" + kKey + "rb0\n# " + kKey + "rc0\n" + kKey + "ra0\n", "ra0"    },
        {"LineWithoutEquals",           "INDEX0_main_ifname\n\n" + kKey + "ra0\n",                "ra0"    },
        {"BlankBeforeEquals",           "INDEX0_main_ifname =rb0\n" + kKey + "ra0\n",             "ra0"    },
        {"BlankBeforeKey",              " " + kKey + "rb0\n",                                     ""       },
        {"OtherCase",                   "index0_main_ifname=rb0\n",                               ""       },
        {"LongerKey",                   "INDEX0_main_ifname2=rb0\n",                              ""       },
        {"ShorterKey",                  "INDEX0_main_ifnam=rb0\n",                                ""       },
        {"MoreEqualsInTheValue",        kKey + "=a=b\n",                                          "=a=b"   },
        {"BlanksAndReturnStay",         kKey + " ra0 \r\n",                                       " ra0 \r"},
        {"Value127",                    kKey + k127 + "\n",                                       k127     },
        {"Value128",                    kKey + k127 + "x\n",                                      k127     },
        {"LineOf255",                   k255 + "\n" + kKey + "ra0\n",                             "ra0"    },
        {"KeyAtTheStartOfASecondPiece", k255 + kKey + "ra0\n",                                    "ra0"    },
        {"KeyOneByteIntoASecondPiece",  k255 + "x" + kKey + "ra0\n",                              ""       },
        {"SecondPieceOfAComment",       "#" + k255.substr(1) + kKey + "ra0\n",                    "ra0"    },
}),
    harness::CaseName());

TEST_F(L1Profile, MissingIsReportedAtEveryLookup) {
    remove(harness::kL1ProfilePath);
    EXPECT_STREQ("", get_wl_ifname_by_wlmode(0));
    EXPECT_EQ(kMissing, out());
    EXPECT_STREQ("", get_racfg_filename(1));
    EXPECT_STREQ("0", get_wl_bridge_ifname_by_wlmode(0));
    EXPECT_STREQ("2", get_wl_ifname(2));
    EXPECT_EQ(std::string(kMissing) + kMissing + kMissing, out());
    EXPECT_EQ(Lines(4, kMissingLogged), journal());
}

TEST_F(L1Profile, MissingMatchesOnlyNamesThatStartWithADigit) {
    remove(harness::kL1ProfilePath);
    host().wl_modes = {1, 0};
    EXPECT_EQ(65541, get_wl_idx_by_ifname("5"));
    EXPECT_EQ(kMissing, out());
    EXPECT_EQ(-1, get_wl_idx_by_ifname("ra0"));
    EXPECT_EQ(std::string(kMissing) + kMissing, out());
    EXPECT_EQ(Lines(3, kMissingLogged), journal());
}

TEST_F(L1Profile, UnreadableIsMissing) {
    fail_next("fopen");
    EXPECT_STREQ("", get_racfg_filename(0));
    EXPECT_EQ(kMissing, out());
    EXPECT_EQ(Lines{kMissingLogged}, journal());
}

TEST_F(L1Profile, IsReadAtEveryLookup) {
    EXPECT_STREQ("ra0", get_wl_ifname_by_wlmode(0));
    write_l1profile("INDEX0_main_ifname=wlan7\n");
    EXPECT_STREQ("wlan7", get_wl_ifname_by_wlmode(0));
    write_l1profile("INDEX1_main_ifname=rai0\n");
    EXPECT_STREQ("", get_wl_ifname_by_wlmode(0));
}

TEST_F(L1Profile, IndexValueTakesTheRadioAsItIsAndCutsTheKey) {
    const std::string cut = "INDEX-12_" + std::string(22, 'k');
    write_l1profile("INDEX0_a=zero\nINDEX7_a=seven\n" + cut + "=cut\n");
    const auto value_of = [](int radio, std::string_view name) {
        char value[platform::kL1ValueSize] = "untouched";
        const int result = platform::l1profile_get_index_value(radio, name, value);
        return std::to_string(result) + " " + value;
    };
    EXPECT_EQ("0 seven", value_of(7, "a"));
    EXPECT_EQ("0 cut", value_of(-12, std::string(23, 'k')));
    EXPECT_EQ("-1 untouched", value_of(1, "a"));
    remove(harness::kL1ProfilePath);
    EXPECT_EQ("-1 untouched", value_of(0, "a"));
}

}  // namespace
