// How the lines of the radio index file are read.
#include "platform/wlmap.h"
#include "src/wlmap/l1profile.h"
#include "tests/support/board.h"

namespace {

using harness::Lines;

const std::string kMissing = "ERROR: L1PROFILE not found\n";

class L1Profile : public harness::Board {};

TEST_F(L1Profile, AValueStandsBehindItsExactKeyInTheFirstSuchLine) {
    const std::string key = "INDEX0_main_ifname=";
    const std::string k127(127, 'n');
    const std::string k255(255, 'x');  // as much as is read at once
    const std::pair<std::string, std::string> rows[] = {
        {"INDEX1_main_ifname=rai0\n" + key + "ra0\n",                          "ra0"    },
        {key + "\n",                                                           ""       },
        {"#\n" + key + "ra0",                                                  "ra0"    },
        {key + "ra0\n" + key + "ra5\n",                                        "ra0"    },
        {"#" + key + "rb0\n# " + key + "rc0\n" + key + "ra0\n",                "ra0"    },
        {"INDEX0_main_ifname\n\nINDEX0_main_ifname =rb0\n" + key + "ra0\n",    "ra0"    },
        {" " + key + "rb0\nindex0_main_ifname=rb0\nINDEX0_main_ifname2=rb0\n", ""       },
        {key + "=a=b\n",                                                       "=a=b"   },
        {key + " ra0 \r\n",                                                    " ra0 \r"},
        {key + k127 + "x\n",                                                   k127     },
        {k255 + key + "ra0\n",                                                 "ra0"    },
        {k255 + "x" + key + "ra0\n",                                           ""       },
        {"#" + k255.substr(1) + key + "ra0\n",                                 "ra0"    },
    };
    for (const auto& [text, ifname] : rows) {
        write_l1profile(text);
        EXPECT_EQ(ifname, get_wl_ifname_by_wlmode(0)) << text;
    }
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(L1Profile, MissingIsReportedAndMatchesOnlyNamesThatStartWithADigit) {
    fail_nth("fopen", 1);
    host().wl_modes = {1, 0};
    EXPECT_EQ(65541, get_wl_idx_by_ifname("5"));
    EXPECT_EQ(kMissing, out());
    remove(harness::kL1ProfilePath);
    EXPECT_EQ(-1, get_wl_idx_by_ifname("ra0"));
    EXPECT_STREQ("", get_wl_ifname_by_wlmode(0));
    EXPECT_STREQ("", get_racfg_filename(1));
    EXPECT_STREQ("0", get_wl_bridge_ifname_by_wlmode(0));
    EXPECT_STREQ("2", get_wl_ifname(2));
    EXPECT_EQ(kMissing + kMissing + kMissing + kMissing + kMissing + kMissing, out());
    EXPECT_EQ(Lines(7, R"(syslog 1 "ERROR: L1PROFILE not found\n")"), journal());
}

TEST_F(L1Profile, IsReadAtEveryLookup) {
    EXPECT_STREQ("ra0", get_wl_ifname_by_wlmode(0));
    write_l1profile("INDEX0_main_ifname=wlan7\n");
    EXPECT_STREQ("wlan7", get_wl_ifname_by_wlmode(0));
}

TEST_F(L1Profile, IndexValueTakesTheRadioAsItIsAndCutsTheKey) {
    write_l1profile("INDEX0_a=zero\nINDEX7_a=seven\nINDEX-12_" + std::string(22, 'k') + "=cut\n");
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
