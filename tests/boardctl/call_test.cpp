// Calls by name: the table of signatures, every kind of parameter, what is refused.
#include "call/call.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "errors.h"
#include "live/tree.h"
#include "support/driver.h"
#include "switch/switch_board.h"

namespace {

using Arguments = std::vector<std::string>;
using boardctl::Failed;
using boardctl::UsageError;

const boardctl::Library& library() {
    static const boardctl::Library both(BOARD_HOST, BOARD_PLATFORM);
    return both;
}

nlohmann::ordered_json call(const std::string& name, const Arguments& arguments = {}) {
    return boardctl::call_function(library(), name, arguments);
}

std::string content(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(CallTable, HasEveryExportedFunctionAndNoOther) {
    std::ifstream list(harness::test_file("surface/exports.txt"));
    std::vector<std::string> exported;
    for (std::string name; std::getline(list, name);)
        if (name != "module_list" && name != "platform_drv") exported.push_back(name);
    std::vector<std::string> named;
    for (const auto& function : boardctl::exported_functions()) {
        named.push_back(function.name);
        EXPECT_NE(std::string::npos, boardctl::usage(function.name).find(function.help));
        EXPECT_NE(nullptr, library().find(function.name.c_str()));
    }
    EXPECT_EQ(exported, named);
}

class Call : public harness::Driver {};

TEST_F(Call, HandsTextsAndNumbersOverAndShowsWhatComesBack) {
    answer("/sbin/uboot_env -g ethaddr", "00:9F:33:01:02:03\n");
    objects["ra0 0974"] = std::string("\x5a\x00\x1b", 3);
    survey = "Ch\tSSID\n";
    const std::string answer_0974 = R"("answer":"5a001b","length":3})";
    const struct {
        const char* name;
        Arguments arguments;
        std::string answer;
    } kRows[] = {
        {"gpio_set_led",                     {},                       "{}"                                        },
        {"platform_preinit",                 {"-0x80000000"},          R"({"result":-2147483648})"                 },
        {"mt_rssi_to_pwr",                   {"-60"},                  R"({"result":75})"                          },
        {"get_wl_ifname",                    {"0x10002"},              R"({"result":"rai2"})"                      },
        {"wireless_api_get_ifname",          {"1"},                    R"({"result":1,"ifname":"ra1"})"            },
        {"wireless_api_get_ifname",          {"1", "ifname=-"},        R"({"result":0,"ifname":null})"             },
        {"get_wl_idx_by_ifname",             {"-"},                    R"({"result":-1})"                          },
        {"get_one_line",                     {R"(a\\\x1b\x0ab)", "9"}, R"({"result":"b","line":"a\\\\\\x1b\\x0a"})"},
        {"get_one_line",                     {"-", "-1"},              R"({"result":null,"line":""})"              },
        {"get_hwaddr_flash_raw",             {"eth1"},                 R"({"result":1,"mac":"00:9f:33:01:02:04"})" },
        {"wireless_api_check_station_exist", {"ra0", "0a-b"},          R"({"result":0,"mac":"0A-B"})"              },
        {"trans_uuid_str_to_hex",
         {"00112233-4455-6677-8899-aabbccddeeff"},
         R"({"result":0,"uuid":"00112233445566778899aabbccddeeff"})"                                               },
        {"wsc_get_oid",                      {"ra0", "0x974"},         R"({"result":0,)" + answer_0974             },
        {"wsc_get_oid",                      {"ra0", "1"},             R"({"result":-1,"answer":"","length":0})"   },
        {"wireless_get_scan_buf",            {"ra0", "4"},             R"({"result":4,"buffer":"Ch\\x09S"})"       },
        {"platform_get_drv",
         {},
         R"({"result":{"reserved0":[false,false,false],)"
         R"("refresh_non_ipv4_input_rule":true,"reserved1":[false,false,false]}})"                                 },
    };
    for (const auto& row : kRows)
        EXPECT_EQ(row.answer, call(row.name, row.arguments).dump()) << row.name;
}

TEST_F(Call, HandsBytesOver) {
    objects["ra0 8ef0"];
    EXPECT_EQ(R"({"result":0})", call("wsc_set_oid", {"ra0", "0xef0", "00ff5C", "2"}).dump());
    EXPECT_EQ(std::string("\x00\xff", 2), payload);
    call("wsc_set_oid", {"ra0", "0xef0", "-", "3"});
    EXPECT_EQ(std::string(3, '\0'), payload);
    for (const char* address : {R"(\x00\x1a\x2b\x3c\x4d\x5e)", "00:1a:2b:3c:4d:5e"}) {
        clear_journal();
        call("ethswitch_del_mac", {address});
        EXPECT_EQ("$3 switch del 001A2B3C4D5E", commands().at(0)) << address;
    }
    clear_journal();
    call("mt762x_set_eeprom_mac", {"ra0", "02-00-00-00-1f-02"});
    EXPECT_NE(std::string::npos, commands().at(2).find("021f")) << commands().at(2);
}

TEST_F(Call, RecordsComeFromFieldsHexOrFilesAndGoToFiles) {
    const std::string path = board::root() + "/records";
    const auto set =
        call("set_quolex_helper_bss", {"ssid=a\\x2c\\xff,wep_key[1]=k", "1", "records=@" + path});
    ASSERT_EQ(2u, set["records"].size());
    EXPECT_EQ(2, set["result"]);
    EXPECT_EQ("a,\\xff", set["records"][0]["ssid"]);
    EXPECT_EQ("k", set["records"][1]["wep_key[1]"]);
    EXPECT_EQ("setup-helper", set["records"][1]["ssid"]);
    EXPECT_EQ(2 * sizeof(wireless_conf), content(path).size());
    std::filesystem::resize_file(path, 4 * sizeof(wireless_conf));
    EXPECT_EQ("k", call("set_quolex_helper_bss", {"@" + path, "2"})["records"][0]["wep_key[1]"]);

    EXPECT_EQ(1, call("platform_set_wireless", {"-", "-"}).size());
    const auto list = call("platform_wireless_api_get_ap_list",
                           {"ifname=ra0,channel_check=0x123456789abcdef0,entries[255].signal=-7"});
    EXPECT_EQ("ra0", list["list"]["ifname"]);
    EXPECT_EQ(0x123456789abcdef0, list["list"]["channel_check"]);
    EXPECT_TRUE(list["list"]["entries"].empty());
}

TEST_F(Call, RefusesWhatDoesNotFitAndCallsNothing) {
    const struct {
        const char* name;
        Arguments arguments;
        const char* message;
    } kRows[] = {
        {"reboot",                            {},                           "no exported function is called \"reboot\""},
        {"turn_led",                          {"1"},                        "turn_led takes 2 arguments, not 1"        },
        {"clear_diag_flag",                   {"1"},                        "takes 0 arguments"                        },
        {"turn_led",                          {"1", "on"},                  "on: \"on\" is not a number"               },
        {"turn_led",                          {"1", "2147483648"},          "from -2147483648 to 2147483647"           },
        {"turn_led",                          {"1", "-2147483649"},         "from -2147483648"                         },
        {"turn_led",                          {"1", ""},                    "is not a number"                          },
        {"reg_write",                         {"-1", "0"},                  "from 0 to 4294967295"                     },
        {"wsc_set_oid",                       {"ra0", "65536", "00", "1"},  "from 0 to 65535"                          },
        {"set_hwaddr_flash",                  {"\\"},                       "a backslash reads"                        },
        {"set_hwaddr_flash",                  {"\\x4"},                     "a backslash reads"                        },
        {"set_hwaddr_flash",                  {"\\x00"},                    "text holds a zero byte"                   },
        {"set_hwaddr_flash_raw",              {"00:11:22:33:44"},           "is not a MAC address"                     },
        {"set_hwaddr_flash_raw",              {"00:11:22:33:44:gg"},        "hexadecimal digits"                       },
        {"write_config",                      {"0g", "1"},                  "hexadecimal digits"                       },
        {"write_config",                      {"001", "1"},                 "hexadecimal digits"                       },
        {"write_config",                      {"0011", "3"},                "buffer has only 2 bytes"                  },
        {"mtd_writebuf",                      {"0011", "1", "2", "Config"}, "buffer has only 2 bytes"                  },
        {"read_config",                       {"0", "2147483647"},          "larger than 64 MiB"                       },
        {"set_port_config",                   {"1", "00"},                  "setting is 30 bytes long, not 1"          },
        {"set_port_config",                   {"1", "@/dev/null"},          "setting is 30 bytes long, not 0"          },
        {"set_port_config",                   {"1", "mode=on,speed"},       "\"speed\" is not FIELD=VALUE"             },
        {"set_port_config",                   {"1", "mode=elevenbytes"},    "mode holds 10 bytes"                      },
        {"set_port_config",                   {"1", "made=on"},             "port_setting has no field \"made\""       },
        {"set_quolex_helper_bss",             {"wep_key[4]=k", "1"},        "has no field"                             },
        {"platform_wireless_api_get_ap_list", {"entries[256].rssi=1"},      "from 0 to 255"                            },
        {"platform_wireless_api_get_ap_list", {"entries[0]=1"},             "takes no value"                           },
    };
    for (const auto& row : kRows) {
        try {
            call(row.name, row.arguments);
            ADD_FAILURE() << row.name << " was called";
        } catch (const UsageError& error) {
            EXPECT_NE(std::string::npos, std::string(error.what()).find(row.message))
                << error.what();
        }
    }
    EXPECT_THROW(call("set_port_config", {"1", "@/no/such/file"}), boardctl::Missing);
    EXPECT_EQ(harness::Lines{}, journal());
}

TEST_F(Call, NoticesWhatIsWrittenPastABuffer) {
    objects["ra0 0974"] = std::string(65536 + 1, 'x');
    EXPECT_THROW(call("wsc_get_oid", {"ra0", "0x974"}), Failed);
}

class SwitchCall : public harness::SwitchBoard {};
using SwitchCallDeathTest = SwitchCall;

TEST_F(SwitchCall, RegistersAreReachedThroughASocketOfTheCall) {
    registers[0x3100] = 0xfffffffe;
    EXPECT_EQ(R"({"result":0,"value":4294967294})", call("reg_read", {"0x3100"}).dump());
    EXPECT_EQ((harness::Lines{"socket", "reg 3100", "close"}), journal());
}

TEST_F(SwitchCall, ListsGoBackToTheirOwner) {
    table.rows = {
        {0x009f3301, 0x020100a5, 0xff000010},
        {0x009f3301, 0x020200a5, 0xff000020}
    };
    EXPECT_EQ(R"({"result":1,"entries":[{"mac":"00:9f:33:01:02:01","info":165,"port_map":1}]})",
              call("mt753x_get_all_macentry", {"1", "0x7f"}).dump());
    const auto stations = call("apcp_get_stalist_from_ethswitch");
    EXPECT_EQ(2, stations["result"]);
    EXPECT_EQ("00:9f:33:01:02:02", stations["list"][1]["mac"]);
}

TEST_F(SwitchCallDeathTest, AFunctionThatEndsTheProcessFails) {
    fail_nth("socket", 1);
    EXPECT_EXIT(call("switch_ioctl_init"), testing::ExitedWithCode(boardctl::kFailed),
                "switch_ioctl_init ended the process");
    fail_no_more();
}

}  // namespace
