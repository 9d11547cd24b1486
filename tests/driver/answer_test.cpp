// What stands in the place of the file that a driver command prints into.
#include <cstring>

#include "board/store/store.h"
#include "platform/wireless.h"
#include "tests/support/board.h"

namespace {

using board::Kind;

struct Query {
    const char* name;
    const char* path;
    const char* text;
    bool (*is_answered)();
};

bool lists_a_station() {
    static station_list list;
    strcpy(list.ifname, "ra0");
    return wireless_api_get_station_list(&list) == 0 && list.count == 1;
}

bool reads_radar_detection() {
    dfs_info info;
    return wireless_get_dfs_info("rai0", &info) == 1;
}

class DriverFile : public harness::Board, public testing::WithParamInterface<Query> {
protected:
    DriverFile() {
        on_command = [this](const std::string&) {
            was_there = memory.kind(path);
            if (was_there != Kind::file) remove(GetParam().path);
            if (leaves_a_link) {
                write("/tmp/elsewhere", GetParam().text);
                memory.link(path, "/tmp/elsewhere");
            } else {
                write(GetParam().path, GetParam().text);
            }
            return 0;
        };
    }
    void TearDown() override {
        out();
        err();
        Board::TearDown();
    }

    const std::string path = GetParam().path;
    bool leaves_a_link = false;
    Kind was_there = Kind::none;  // none: no command ran
};

TEST_P(DriverFile, TakesThePlaceOfALinkAndOfAFifo) {
    write("/etc/other", "other");
    for (const char* place : {"/etc/other", "/etc/missing", "fifo"}) {
        SCOPED_TRACE(place);
        remove(GetParam().path);
        ASSERT_TRUE(*place == '/' ? memory.link(path, place) : memory.make_fifo(path));
        EXPECT_TRUE(GetParam().is_answered());
        EXPECT_NE(Kind::link, was_there);
        EXPECT_NE(Kind::other, was_there);
    }
    EXPECT_EQ("other", read("/etc/other"));
    EXPECT_EQ("(none)", read("/etc/missing"));
}

TEST_P(DriverFile, ThatWasThereBeforeStaysForTheCommand) {
    write(GetParam().path, "before");
    EXPECT_TRUE(GetParam().is_answered());
    EXPECT_EQ(Kind::file, was_there);
}

TEST_P(DriverFile, IsNotReadThroughADirectoryOrALink) {
    board::make_directories(path);
    EXPECT_FALSE(GetParam().is_answered());
    EXPECT_EQ(Kind::directory, memory.kind(path));
    EXPECT_EQ(Kind::none, was_there);
    remove(GetParam().path);
    leaves_a_link = true;
    EXPECT_FALSE(GetParam().is_answered());
}

INSTANTIATE_TEST_SUITE_P(
    , DriverFile,
    testing::Values(Query{.name = "Stations",
                          .path = "/var/run/station_table.ra0",
                          .text = "ra0\nV2\n001122aabbcc 0\n",
                          .is_answered = lists_a_station},
                    Query{.name = "Radar",
                          .path = "/tmp/rai0.dfsinfo",
                          .text = "Dot11_H.RDMode,Dot11_H.ChMovingTime,Dot11_H.RDCount=2,60,15\n",
                          .is_answered = reads_radar_detection},
                    Query{.name = "Client",
                          .path = "/tmp/apclii0.stat",
                          .text = "Ap Client Status=1,-62\n",
                          .is_answered =
                              [] {
                                  return mt762x_get_apcli_status("apclii0", nullptr, nullptr) == 1;
                              }},
                    // A scan that is not known to run counts as ended.
                    Query{.name = "Scan",
                          .path = "/var/run/scan_status",
                          .text = "ra0:1",
                          .is_answered = [] { return wireless_api_wait_scan_end("ra0") == 1; }}),
    harness::CaseName());

}  // namespace
