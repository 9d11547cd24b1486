// The list that a site survey gives: which lines count, and how many.
#include "support/library_hook.h"
#include "wireless/survey.h"

namespace {

using harness::Lines;

class SurveyList : public harness::Survey {};

TEST_F(SurveyList, AsksTheHostForEachChannel) {
    static Lines asked;
    asked.clear();
    const harness::LibraryHook hook(
        "wireless_check_channel_valid",
        +[](const char* ifname, uint64_t argument, int number, int channel) {
            char text[64];
            snprintf(text, sizeof text, "%s %jx %d %d", ifname, uintmax_t{argument}, number,
                     channel);
            asked.emplace_back(text);
            return channel == 44 ? 0 : -1;
        });
    EXPECT_EQ(0, take(kHeader + line(kBssid, "a", "44") + '\n' + line(kBssid, "b", "36") +
                          line("", "c", "0"),
                      "rai2"));
    EXPECT_EQ((Lines{"rai0 123456789abcdef 20 0", "rai0 123456789abcdef 20 44",
                     "rai0 123456789abcdef 20 36", "rai0 123456789abcdef 20 0"}),
              asked);
    EXPECT_EQ(1u, list.count);
    EXPECT_STREQ("b", list.entries[0].ssid);
    EXPECT_EQ(5180, list.entries[0].channel.frequency_mhz);
}

// The host knows no channel 14.
TEST_F(SurveyList, CountsWholeLinesOfLessThan512Characters) {
    const auto long_line = [&](size_t size) {
        return line(kUpToType + std::string(size - line(kUpToType).size(), ' '));
    };
    const std::pair<std::string, uint32_t> kRows[] = {
        {kHeader,                           0                   },
        {"\n \t\n" + kHeader,               0                   },
        {line(kBssid) + line(kBssid),       2                   },
        {line(kBssid) + "6   unterminated", 1                   },
        {long_line(511) + line(kBssid),     2                   },
        {long_line(512) + line(kBssid),     1                   },
        {line(kBssid) + std::string(1,      '\0') + line(kBssid), 1},
        {"14  " + line(kBssid) + line(kBssid),                                 1                 },
    };
    for (const auto& [text, count] : kRows) {
        clear();
        EXPECT_EQ(0, take(text));
        EXPECT_EQ(count, list.count) << text;
        EXPECT_EQ(7u, list.type);
    }
}

TEST_F(SurveyList, ListsAtMost256) {
    struct {
        ap_list list;
        char guard[64];
    } guarded;
    memset(&guarded, 'x', sizeof guarded);
    strcpy(guarded.list.ifname, "ra0");
    for (int i = 0; i < 300; ++i) survey += line(kBssid + "NONE 7");
    EXPECT_EQ(0, platform_wireless_api_get_ap_list(&guarded.list));
    EXPECT_EQ(256u, guarded.list.count);
    EXPECT_EQ(7, guarded.list.entries[255].signal);
    EXPECT_EQ(std::string(64, 'x'), std::string(guarded.guard, 64));
}

TEST_F(SurveyList, EndsWithinItsTextBuffer) {
    const std::string wide = line(std::string(256 - 38, ' '));  // 128 of them fill the buffer
    std::string text;
    for (int i = 0; i < 128; ++i) text += wide;
    for (const auto& [length, count] : {
             std::pair(32767, 127u), {32768, 127u},
               {65535, 127u},
               {512,   2u  }
    }) {
        clear();
        survey_length = static_cast<uint16_t>(length);
        EXPECT_EQ(0, take(text));
        EXPECT_EQ(count, list.count);
    }
}

TEST_F(SurveyList, OfNoText) {
    const auto expect_none = [this](int result, const char* ifname) {
        clear();
        EXPECT_EQ(result, take(survey, ifname));
        EXPECT_EQ(0u, list.count);
        EXPECT_EQ(7u, list.type);
        EXPECT_EQ('x', list.entries[0].ssid[0]);
    };
    expect_none(1, "ra0");  // refused
    survey = line(kBssid);
    expect_none(0, "ra9");  // no such interface
    fail_nth("malloc", 1);
    expect_none(1, "ra0");
    EXPECT_EQ(1, platform_wireless_api_get_ap_list(nullptr));
}

TEST_F(SurveyList, IsSplitIntoLines) {
    char buffer[8];
    const char* const text = "ab\n1234567\n12345678\n\nrest";
    const struct {
        int offset;
        const char* line;
        int next;  // -1: none
    } kRows[] = {
        {0,  "ab\n",     3 },
        {3,  "",         11},
        {4,  "234567\n", 11},
        {11, "",         20},
        {20, "\n",       21},
        {21, "",         -1},
    };
    for (const auto& row : kRows) {
        memset(buffer, 'x', sizeof buffer);
        const char* const next = get_one_line(text + row.offset, buffer, 8);
        EXPECT_EQ(row.next < 0 ? nullptr : text + row.next, next);
        std::string expected = row.line;
        expected.resize(8);
        EXPECT_EQ(expected, std::string(buffer, 8));
    }
}

// An empty interface name: no board of ours has one.
TEST_F(SurveyList, TellsTheSignalOfABssid) {
    survey = line("0a:00:00:00:00:01 NONE 70") + line(kBssid + "NONE 80") + line(kBssid + "NONE 9");
    EXPECT_EQ(0, rt61_wireless_api_get_ap_norm_power("00:11:22:AA:BB:CC"));
    on_ioctl[0x8933] = [](void*) { return 0; };
    EXPECT_EQ(80, rt61_wireless_api_get_ap_norm_power("00:11:22:AA:BB:CC"));
    EXPECT_EQ(0, rt61_wireless_api_get_ap_norm_power("00:11:22:aa:bb:cc"));
    EXPECT_EQ(0, rt61_wireless_api_get_ap_norm_power(""));
    fail_nth("malloc", 1);
    EXPECT_EQ(0, rt61_wireless_api_get_ap_norm_power("00:11:22:AA:BB:CC"));
}

TEST_F(SurveyList, IsStartedAndAwaited) {
    EXPECT_EQ(0, wireless_api_start_ap_scan("ra0"));
    EXPECT_EQ((Lines{"$ /sbin/iwpriv ra0 set SiteSurvey=1", "sleep 1"}), journal());
    clear_journal();
    write("/var/run/scan_status", "1");
    EXPECT_EQ(1, wireless_api_wait_scan_end("ra0"));
    Lines polls;
    for (int i = 0; i < 15; ++i)
        polls.insert(polls.end(),
                     {"$ /sbin/iwpriv ra0 get_scan_status > /var/run/scan_status", "sleep 1"});
    EXPECT_EQ(polls, journal());
    write("/var/run/scan_status", "0");
    EXPECT_EQ(0, wireless_api_wait_scan_end("ra0"));
    EXPECT_EQ(0, platform_wireless_api_stop_ap_scan());
}

}  // namespace
