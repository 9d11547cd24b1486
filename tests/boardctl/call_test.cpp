// Calls by name: the table of signatures, every kind of parameter, what is refused.
#include "boardctl/call/call.h"

#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

#include "board/store/store.h"
#include "boardctl/errors.h"
#include "border/row.h"
#include "tests/support/driver.h"
#include "tests/switch/switch_board.h"

namespace {

using boardctl::UsageError;
using harness::Lines;

const boardctl::Library& library() {
    static const boardctl::Library both(BOARD_HOST, BOARD_PLATFORM);
    return both;
}

// The line's words are the function and its arguments.
nlohmann::ordered_json call(const std::string& line) {
    std::istringstream words(line);
    const Lines arguments{std::istream_iterator<std::string>(words), {}};
    return boardctl::call_function(library(), arguments.at(0),
                                   {arguments.begin() + 1, arguments.end()});
}

TEST(CallTable, EveryExportIsListedAndItsUsageShowsItsExample) {
    size_t count = 0;
    for (const auto& function : boardctl::exported_functions()) {
        const std::string usage = boardctl::usage(function.name);
        EXPECT_NE(std::string::npos, usage.find(function.help));
        EXPECT_NE(std::string::npos, usage.find("Example: call " + function.name));
        EXPECT_NE(nullptr, library().find(function.name.c_str()));
        ++count;
    }
    EXPECT_EQ(border::exports().size(), count);
}

class CallByName : public harness::Driver {};

TEST_F(CallByName, HandsTextsAndNumbersOverAndShowsWhatComesBack) {
    answer("/sbin/uboot_env -g ethaddr", "00:9F:33:01:02:03\n");
    objects["ra0 0974"] = std::string("\x5a\x00\x1b", 3);
    survey = "Ch\tSSID\n";
    const struct {
        const char* line;
        const char* answer;
    } rows[] = {
        {"platform_power_led_control 1",              "{}"                                          },
        {"platform_preinit -0x80000000",              R"({"result":-2147483648})"                   },
        {"get_wl_ifname 0x10002",                     R"({"result":"rai2"})"                        },
        {"wireless_api_get_ifname 1",                 R"({"result":1,"ifname":"ra1"})"              },
        {"wireless_api_get_ifname 1 ifname=-",        R"({"result":0,"ifname":null})"               },
        {R"(get_one_line a\\\x1b\x0ab 9)",            R"({"result":"b","line":"a\\\\\\x1b\\x0a"})"  },
        {"get_one_line - -1",                         R"({"result":null,"line":""})"                },
        {"get_hwaddr_flash_raw eth1",                 R"({"result":1,"mac":"00:9f:33:01:02:04"})"   },
        {"wireless_api_check_station_exist ra0 0a-b", R"({"result":0,"mac":"0A-B"})"                },
        {"wsc_get_oid ra0 0x974",                     R"({"result":0,"answer":"5a001b","length":3})"},
        {"wsc_get_oid ra0 1",                         R"({"result":-1,"answer":"","length":0})"     },
        {"wireless_get_scan_buf ra0 4",               R"({"result":4,"buffer":"Ch\\x09S"})"         },
        {"trans_uuid_str_to_hex 0-0-0-0-0",
         R"({"result":0,"uuid":"00000000000000000000000000000000"})"                                },
    };
    for (const auto& row : rows) EXPECT_EQ(row.answer, call(row.line).dump()) << row.line;
    EXPECT_EQ(true, call("platform_get_drv")["result"]["refresh_non_ipv4_input_rule"]);
}

TEST_F(CallByName, HandsBytesOver) {
    objects["ra0 8ef0"];
    EXPECT_EQ(0, call("wsc_set_oid ra0 0xef0 00ff5C 2")["result"]);
    EXPECT_EQ(std::string("\x00\xff", 2), payload);
    call("wsc_set_oid ra0 0xef0 - 3");
    EXPECT_EQ(std::string(3, '\0'), payload);
    call(R"(ethswitch_del_mac \x00\x1a\x2b\x3c\x4d\x5e)");
    call("mt762x_set_eeprom_mac ra0 02-00-00-00-1f-02");
    EXPECT_EQ("$3 switch del 001A2B3C4D5E", commands().at(0));
    EXPECT_EQ("$2 iwpriv ra0 e2p 8=021f", commands().at(3));
}

TEST_F(CallByName, RecordsComeFromFieldsHexOrFilesAndGoToFiles) {
    const std::string path = testing::TempDir() + "records." + std::to_string(getpid());
    const auto set =
        call(R"(set_quolex_helper_bss ssid=a\x2c\xff,wep_key[1]=k 1 records=@)" + path);
    ASSERT_EQ(2u, set["records"].size());
    EXPECT_EQ(2, set["result"]);
    EXPECT_EQ("a,\\xff", set["records"][0]["ssid"]);
    EXPECT_EQ("k", set["records"][1]["wep_key[1]"]);
    EXPECT_EQ("setup-helper", set["records"][1]["ssid"]);
    EXPECT_EQ(2 * sizeof(wireless_conf), std::filesystem::file_size(path));
    std::filesystem::resize_file(path, 4 * sizeof(wireless_conf));
    EXPECT_EQ("k", call("set_quolex_helper_bss @" + path + " 2")["records"][2]["wep_key[1]"]);
    std::filesystem::remove(path);

    const auto list = call(
        "platform_wireless_api_get_ap_list ifname=ra0,channel_check=0x8000000000000000")["list"];
    EXPECT_EQ("ra0", list["ifname"]);
    EXPECT_EQ(0x8000000000000000, list["channel_check"]);
    EXPECT_EQ("[]", list["entries"].dump());
}

TEST_F(CallByName, RefusesWhatDoesNotFitAndCallsNothing) {
    const struct {
        const char* line;
        const char* message;
    } rows[] = {
        {"reboot",                                      "no exported function is called \"reboot\""},
        {"reg_write 1",                                 "reg_write takes 2 arguments, not 1"       },
        {"reg_write on 1",                              "offset: \"on\" is not a number"           },
        {"reg_write 0x 1",                              "is not a number"                          },
        {"reg_write -1 0",                              "from 0 to 4294967295"                     },
        {"set_sniff_port 2147483648",                   "from -2147483648 to 2147483647"           },
        {"wsc_set_oid ra0 65536 00 1",                  "from 0 to 65535"                          },
        {"wsc_set_oid ra0 1 001 1",                     "hexadecimal digits"                       },
        {"wsc_set_oid ra0 1 0011 3",                    "the bytes end at 2"                       },
        {"mtd_writebuf 0011 1 2 Config",                "the bytes end at 2"                       },
        {R"(set_run_led_op \)",                         "a backslash reads \\\\ or begins"         },
        {R"(set_run_led_op \x00)",                      "operation holds a zero byte"              },
        {"mt762x_set_eeprom_mac ra0 00:11:22:33:44",    "is not a MAC address"                     },
        {"mt762x_set_eeprom_mac ra0 00:11:22:33:44:gg", "hexadecimal digits"                       },
        {"read_config 0 2147483647",                    "larger than 64 MiB"                       },
        {"set_port_config 1 00",                        "setting is 30 bytes long, not 1"          },
        {"set_port_config 1 mode=on,speed",             "\"speed\" is not FIELD=VALUE"             },
        {"set_port_config 1 mode=elevenbytes",          "mode holds 10 bytes"                      },
        {"set_port_config 1 made=on",                   "port_setting has no field \"made\""       },
        {"set_quolex_helper_bss wep_key[4]=k 1",        "has no field"                             },
        {"platform_wireless_api_get_ap_list entries=1", "has no field"                             },
    };
    for (const auto& [line, message] : rows) {
        try {
            ADD_FAILURE() << line << " gave " << call(line);
        } catch (const UsageError& error) {
            EXPECT_NE(std::string::npos, std::string(error.what()).find(message)) << error.what();
        }
    }
    EXPECT_THROW(call("set_port_config 1 @/no/such/file"), boardctl::Missing);
    EXPECT_EQ(Lines{}, journal());
}

TEST_F(CallByName, NoticesWhatIsWrittenPastABuffer) {
    objects["ra0 0974"] = std::string(65536 + 1, 'x');
    EXPECT_THROW(call("wsc_get_oid ra0 0x974"), boardctl::Failed);
}

class SwitchCall : public harness::SwitchBoard {};
using SwitchCallDeathTest = SwitchCall;

TEST_F(SwitchCall, RegistersAreReachedThroughASocketOfTheCall) {
    registers[0x3100] = 0xfffffffe;
    EXPECT_EQ(R"({"result":0,"value":4294967294})", call("reg_read 0x3100").dump());
    EXPECT_EQ((Lines{"socket", "reg 3100", "close"}), journal());
}

TEST_F(SwitchCall, ListsGoBackToTheirOwner) {
    table.rows.push_back({0x009f3301, 0x020100a5, 0xff000010});
    table.rows.push_back({0x009f3301, 0x020200a5, 0xff000020});
    EXPECT_EQ(R"({"result":1,"entries":[{"mac":"00:9f:33:01:02:01","info":165,"port_map":1}]})",
              call("mt753x_get_all_macentry 1 0x7f").dump());
    const auto stations = call("apcp_get_stalist_from_ethswitch");
    EXPECT_EQ(2, stations["result"]);
    EXPECT_EQ("00:9f:33:01:02:02", stations["list"].at(1)["mac"]);
}

TEST_F(SwitchCallDeathTest, AFunctionThatEndsTheProcessFails) {
    fail_nth("socket", 1);
    EXPECT_EXIT(call("switch_ioctl_init"), testing::ExitedWithCode(boardctl::kFailed),
                "switch_ioctl_init ended the process");
    fail_no_more();
}

}  // namespace
