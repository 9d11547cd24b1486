// The driver's site survey: the columns of a line, which lines count, and how many.
#include <cstring>

#include "platform/wireless.h"
#include "tests/support/driver.h"
#include "tests/support/library_hook.h"

namespace {

using harness::rows;

// Texts as the driver prints them, read into a list of 'x'.
class Survey : public harness::Driver {
protected:
    Survey() { clear(); }

    void clear() {
        memset(&list, 'x', sizeof list);
        list.count = 0;
        list.channel_check = 0x0123'4567'89AB'CDEF;
        list.entries[0].flags = flags;
    }
    // A line up to the end of its fixed columns, and with the rest.
    static std::string line(const std::string& rest, std::string ssid = "net",
                            std::string channel = "6") {
        channel.resize(4, ' ');
        ssid.resize(33, ' ');
        return channel + ssid + rest + '\n';
    }
    int take(const std::string& text, const char* ifname = "ra0") {
        survey = text;
        memset(list.ifname, 0, sizeof list.ifname);
        strcpy(list.ifname, ifname);
        return platform_wireless_api_get_ap_list(&list);
    }
    // What a list of 'x' holds then; the text stays behind the last entry.
    void expect_count(uint32_t count, const std::string& text, int result = 0,
                      const char* ifname = "ra0") {
        clear();
        EXPECT_EQ(result, take(text, ifname)) << text;
        EXPECT_EQ(count, list.count) << text;
        EXPECT_EQ(7u, list.type);
        EXPECT_EQ('x', list.entries[count].ssid[0]);
    }
    // The entry of a lone line.
    const ap_entry& entry_of(const std::string& text) {
        expect_count(1, kHeader + text);
        return list.entries[0];
    }

    const std::string kHeader = line("BSSID Security Siganl(%) W-Mode ExtCH NT WPS", "SSID", "Ch");
    const std::string kBssid = "00:11:22:aa:bb:cc ";
    const std::string kUpToType = kBssid + "WPA2PSK/AES 80(-55) 11b/g/n NONE Infra ";
    uint32_t flags = 0x78787879;  // of the entry before it is filled
    ap_list list;
};

// Adds one column after the other: what is missing keeps the caller's bytes.
TEST_F(Survey, FillsTheColumnsThatALineHas) {
    const std::string columns[] = {
        "00:11:22:aa:bb:cc", "WPA2PSK/AES", "80(-55)", "11b/g/n", "ABOVE", "Infra", "YES", "PBC"};
    ap_entry expected;
    memset(&expected, 'x', sizeof expected);
    expected.flags = flags;
    strcpy(expected.ssid, "net");
    expected.channel.channel = expected.channel.ext_channel = 6;
    expected.channel.frequency_mhz = 2437;
    expected.seen_at = 1'700'000'000;
    expected.element = {};
    std::string rest;
    for (size_t last = 0; last <= 8; ++last) {
        if (last >= 1) rest += columns[last - 1] + " \t ";
        if (last == 1) strcpy(expected.bssid, "00:11:22:AA:BB:CC");
        if (last == 2) expected.auth_mode = 9, expected.encryption = 4;
        if (last == 3) expected.signal = 80, expected.rssi = -55;
        if (last == 5) expected.channel.ext_channel = 8;
        if (last == 6) expected.network_type = 0;
        if (last == 7) expected.flags &= ~1u;
        if (last == 8) expected.flags |= 1;
        EXPECT_EQ(0, memcmp(&expected, &entry_of(line(rest)), sizeof expected)) << last;
    }
}

TEST_F(Survey, NamesSecurityByItsWords) {
    for (const auto& [word, auth_mode, encryption] : rows<std::string, int, int>(
             "NONE 1 0  WEP 2 1  WPA2PSK 1 0  OPEN/NONE 1 0  OPEN/WEP 1 1  WEP/WEP 2 1 "
             "WPA/TKIP 4 3  WPAPSK/TKIP 5 3  WPANONE/AES 7 4  WPA2/AES 8 4  WPA2PSK/AES 9 4 "
             "WPA1WPA2/TKIPAES 11 5  WPAPSKWPA2PSK/TKIPAES 10 5  WPA1PSKWPA2PSK/TKIPAES 10 5 "
             "FT-WPA2PSK/AES 9 4  FT-FT-WPA2PSK/AES 1 4  wpa2psk/aes 1 0  WPA3SAE/GCMP 1 0 "
             "WPA2PSK/AES/TKIP 9 0  /AES 1 4  WPA2PSK/ 9 0")) {
        const ap_entry& entry = entry_of(line(kBssid + word));
        EXPECT_EQ(auth_mode, entry.auth_mode) << word;
        EXPECT_EQ(encryption, entry.encryption) << word;
    }
}

TEST_F(Survey, GuessesAnUnknownAuthModeFromTheCipher) {
    for (const auto& [encryption, auth_mode] : rows<int, int>("3 5  4 5  5 1  0 1")) {
        list.entries[0].auth_mode = -1;
        list.entries[0].encryption = encryption;
        EXPECT_EQ(0, take(line(kBssid)));
        EXPECT_EQ(auth_mode, list.entries[0].auth_mode);
    }
}

TEST_F(Survey, ReadsSignalExtensionAndType) {
    // 0x78787878 is untouched.
    for (const auto& [column, signal, rssi] : rows<std::string, int, int>(
             "80(-55) 80 -55  80 80 2021161080  (-55) 0 -55  80( 80 0  x(y) 0 0  7(-8(9) 7 -8")) {
        const ap_entry& entry = entry_of(line(kBssid + "NONE " + column));
        EXPECT_EQ(signal, entry.signal) << column;
        EXPECT_EQ(rssi, entry.rssi) << column;
    }
    for (const auto& [extension, centre, word, type] : rows<std::string, int, std::string, int>(
             "ABOVE 8 Infra 0  BELOW 4 Adhoc 1  NONE 6 infra -1  above 6 Mesh -1")) {
        const ap_entry& entry = entry_of(line(kBssid + "NONE 1 b " + extension + ' ' + word));
        EXPECT_EQ(centre, entry.channel.ext_channel) << extension;
        EXPECT_EQ(type, entry.network_type) << word;
    }
}

TEST_F(Survey, TakesTheSsidFromItsFixedColumn) {
    const std::string full = "12345678901234567890123456789012";
    for (const std::string& ssid :
         {std::string(), std::string(" a  b"), std::string("\xE7\xB6"), std::string("36 c"), full})
        for (const char* indent : {"", " \t"})
            EXPECT_EQ(ssid, entry_of(indent + line(kBssid, ssid)).ssid);
    EXPECT_EQ(full, entry_of(line(kBssid, full + "!")).ssid);
    EXPECT_EQ(std::string(39, 'B'), entry_of(line(std::string(60, 'b'))).bssid);
}

class SurveyElement : public Survey {
protected:
    // The first 16 bytes in hexadecimal, without the last zeros, and the text.
    void expect_element(const std::string& columns, const std::string& bytes,
                        const std::string& text) {
        SCOPED_TRACE(columns);
        vendor_element expected = {};
        for (size_t i = 0; i < bytes.size(); i += 2)
            reinterpret_cast<uint8_t*>(&expected)[i / 2] =
                static_cast<uint8_t>(std::stoi(bytes.substr(i, 2), nullptr, 16));
        text.copy(expected.text, sizeof expected.text);
        const ap_entry& entry = entry_of(line(kUpToType + columns));
        EXPECT_EQ(0, memcmp(&expected, &entry.element, sizeof expected));
    }
    const std::string kHex = "10203040 001122334455 66778899aABB ";
    const std::string kBytes = "1020304000112233445566778899aabb";
};

// The flag of the push button is left, set or cleared.
TEST_F(SurveyElement, IsReadBehindThePushButton) {
    const std::tuple<std::string, uint32_t, uint32_t, std::string> kRows[] = {
        {"",                                   0, 1, ""                                },
        {"YES PBC",                            1, 1, ""                                },
        {"YES PIN",                            0, 0, ""                                },
        {"YES",                                0, 0, ""                                },
        {"NO PBC",                             0, 1, "000c"                            },
        {"YES PBC " + kHex,                    1, 1, kBytes                            },
        {"NO " + kHex,                         0, 1, kBytes                            },
        {"NO YES " + kHex,                     0, 1, kBytes                            },
        {"NO NO NO 001122334455 66778899aabb", 0, 1, "0000000000112233445566778899aabb"},
        {"NO 10203040 NO 66778899aabb",        0, 1, "1020304000000000000066778899aabb"},
        {"NO 10203040 001122334455 NO name",   0, 1, "10203040001122334455"            },
        {"NO 102 00112233445566 6",            0, 1, "1002000000112233445506"          },
        {"NO xx20304z 0-1122 66778899aabb",    0, 1, "0020300400112200000066778899aabb"},
    };
    for (const auto& [columns, from_0, from_1, bytes] : kRows)
        for (const uint32_t before : {0u, ~0u}) {
            flags = before;
            expect_element(columns, bytes, "");
            EXPECT_EQ(before == 0 ? from_0 : ~1u | from_1, list.entries[0].flags);
        }
}

TEST_F(SurveyElement, HasANameUpToItsColumnsEnd) {
    const std::pair<const char*, const char*> kRows[] = {
        {"My Router       x", "My Router      "},
        {"abcdefghijklmnopq", "abcdefghijklmno"},
        {"A  B    C       ",  "A  B    C      "},
        {"Name",              "Name"           },
        {"             X Yz", "X Y"            },
        {"                X", ""               },
        {"YES we can",        ""               },
    };
    for (const auto& [column, text] : kRows) expect_element("NO " + kHex + column, kBytes, text);
}

class SurveyList : public Survey {};

TEST_F(SurveyList, AsksTheHostForEachChannel) {
    static std::string asked;
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
    const char* text = "ab\n123456\n1234567\n\nrest";
    for (std::string expected : {"ab\n", "123456\n", "", "\n", ""}) {  // 7 characters fit
        std::string buffer(8, 'x');
        text = get_one_line(text, buffer.data(), 8);
        expected.resize(8);
        EXPECT_EQ(expected, buffer);
    }
    EXPECT_EQ(nullptr, text);
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
