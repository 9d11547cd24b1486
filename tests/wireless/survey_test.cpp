// The columns of the driver's site survey.
#include "wireless/survey.h"

namespace {

using harness::rows;
using harness::Survey;

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
        SCOPED_TRACE(last);
        if (last >= 1) rest += columns[last - 1] + " \t ";
        if (last == 1) strcpy(expected.bssid, "00:11:22:AA:BB:CC");
        if (last == 2) expected.auth_mode = 9, expected.encryption = 4;
        if (last == 3) expected.signal = 80, expected.rssi = -55;
        if (last == 5) expected.channel.ext_channel = 8;
        if (last == 6) expected.network_type = 0;
        if (last == 7) expected.flags &= ~1u;
        if (last == 8) expected.flags |= 1;
        EXPECT_EQ(0, memcmp(&expected, &entry_of(line(rest)), sizeof expected));
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

}  // namespace
