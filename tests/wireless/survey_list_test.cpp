// The list that a site survey gives: which lines count, and how many.
#include "support/library_hook.h"
#include "wireless/survey.h"

namespace {

using harness::rows;

class SurveyList : public harness::Survey {};

TEST_F(SurveyList, AsksTheHostForEachChannel) {
    static std::string asked;
    asked.clear();
    const harness::LibraryHook hook(
        "wireless_check_channel_valid",
        +[](const char* ifname, uint64_t argument, int number, int channel) {
            char text[64];
            snprintf(text, sizeof text, "%s %jx %d %d\n", ifname, uintmax_t{argument}, number,
                     channel);
            asked += text;
            return channel == 44 ? 0 : -1;
        });
    EXPECT_EQ(0, take(kHeader + line(kBssid, "a", "44") + '\n' + line(kBssid, "b", "36") +
                          line("", "c", "0"),
                      "rai2"));
    EXPECT_EQ(
        "rai0 123456789abcdef 20 0\nrai0 123456789abcdef 20 44\nrai0 123456789abcdef 20 36\n"
        "rai0 123456789abcdef 20 0\n",
        asked);
    EXPECT_EQ(1u, list.count);
    EXPECT_STREQ("b", list.entries[0].ssid);
    EXPECT_EQ(5180, list.entries[0].channel.frequency_mhz);
}

// The host knows no channel 14.
TEST_F(SurveyList, CountsWholeLinesOfLessThan512Characters) {
    const std::string one = line(kBssid);
    const auto long_line = [&](size_t size) {
        return line(kUpToType + std::string(size - line(kUpToType).size(), ' '));
    };
    expect_count(0, "\n \t\n" + kHeader);
    for (const std::string& other :
         {"14  " + one, std::string(1, '\0') + one, long_line(512), std::string()})
        expect_count(1, one + other + "6   unterminated");
    expect_count(2, long_line(511) + one);
}

TEST_F(SurveyList, ListsAtMost256) {
    harness::Guarded<ap_list> guarded;
    strcpy(guarded.record.ifname, "ra0");
    for (int i = 0; i < 300; ++i) survey += line(kBssid + "NONE 7");
    EXPECT_EQ(0, platform_wireless_api_get_ap_list(&guarded.record));
    EXPECT_EQ(256u, guarded.record.count);
    EXPECT_EQ(7, guarded.record.entries[255].signal);
    EXPECT_TRUE(guarded.intact_from(guarded.after));
}

TEST_F(SurveyList, EndsWithinItsTextBuffer) {
    const std::string wide = line(std::string(256 - 38, ' '));  // 128 of them fill the buffer
    std::string text;
    for (int i = 0; i < 128; ++i) text += wide;
    for (const auto& [length, count] :
         rows<uint16_t, uint32_t>("32767 127  32768 127  65535 127  512 2")) {
        survey_length = length;
        expect_count(count, text);
    }
}

TEST_F(SurveyList, OfNoText) {
    expect_count(0, "", 1);                   // refused
    expect_count(0, line(kBssid), 0, "ra9");  // no such interface
    fail_nth("malloc", 1);
    expect_count(0, line(kBssid), 1);
    EXPECT_EQ(1, platform_wireless_api_get_ap_list(nullptr));
}

TEST_F(SurveyList, IsSplitIntoLines) {
    char buffer[8];
    const char* const text = "ab\n1234567\n12345678\n\nrest";
    const std::tuple<int, const char*, const char*> kRows[] = {
        {0,  "ab\n",     text + 3 },
        {3,  "",         text + 11},
        {4,  "234567\n", text + 11},
        {20, "\n",       text + 21},
        {21, "",         nullptr  },
    };
    for (const auto& [offset, line, next] : kRows) {
        memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(next, get_one_line(text + offset, buffer, 8));
        std::string expected = line;
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
    EXPECT_EQ("$ /sbin/iwpriv ra0 set SiteSurvey=1\nsleep 1\n", taken());
    write("/var/run/scan_status", "1");
    EXPECT_EQ(1, wireless_api_wait_scan_end("ra0"));
    const std::string poll = "$ /sbin/iwpriv ra0 get_scan_status > /var/run/scan_status\n";
    std::string polls;
    for (int i = 0; i < 15; ++i) polls += poll + "sleep 1\n";
    EXPECT_EQ(polls, taken());
    write("/var/run/scan_status", "0");
    EXPECT_EQ(0, wireless_api_wait_scan_end("ra0"));
    EXPECT_EQ(poll, taken());
}

}  // namespace
