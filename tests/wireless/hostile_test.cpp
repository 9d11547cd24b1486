// Damaged tables: whatever a driver or a neighbour prints stays within the records.
#include <cstring>
#include <memory>
#include <random>

#include "platform/wireless.h"
#include "src/wireless/station_table.h"
#include "src/wireless/survey_table.h"
#include "tests/support/driver.h"

namespace {

using harness::Guarded;

constexpr std::string_view kStations =
    "ra0       get_mac_table:\nV2 MAC AID PSM\n"
    "001122aabbcc 0 3 0 1 -45 -47 52 18446744073709551615 4294967296 -45/-47/-127/-127\n"
    "ffffffffffff C 99 0 0 7 8 9 10 11 -1/-2/-3/-4/-5/-6/-7/-8/-9/-10\n"
    "0123456789ab 1 2 3 4 5 6 7 8 9 0/-50 extra columns\n";
constexpr std::string_view kSurvey =
    "Ch  SSID                             BSSID               Security  Siganl(%)W-Mode\n"
    "6   My Network                       00:11:22:aa:bb:cc   WPA2PSK/AES 80(-55) 11b/g/n ABOVE "
    "Infra YES PBC 10203040 001122334455 66778899aabb My Router       \n"
    "36  \xE7\xB6\xB2                              ff:ff:ff:ff:ff:ff FT-WPA1PSKWPA2PSK/TKIPAES "
    "7(-90) 11a BELOW Adhoc NO YES NO NO NO\n"
    "11                                   0a:0b:0c:0d:0e:0f NONE 1 b NONE Infra YES\n";
constexpr const char* kNumbers[] = {
    "-2147483648 ", "99999999999999999999999 ", "2147483647(", "-1 ", "/-/", "YES NO YES "};

class Hostile {
public:
    // The table after a few blows.
    std::string table(std::string_view from) {
        std::string text(from);
        for (size_t blows = 1 + number(6); blows > 0; --blows) strike(text);
        return text;
    }
    size_t number(size_t below) { return random_() % below; }

private:
    // Cuts off, cuts out, or puts something in.
    void strike(std::string& text) {
        const size_t at = number(text.size() + 1);
        const size_t size = number(number(20) == 0 ? 3000 : 40);
        const std::string pieces[] = {text.substr(at, size),
                                      text.substr(0, 2000),
                                      std::string(1, '\0'),
                                      std::string(size, static_cast<char>(number(256))),
                                      std::string(size, " \t\n/(-C9"[number(8)]),
                                      kNumbers[number(std::size(kNumbers))]};
        const size_t blow = number(8);
        if (blow < 2)
            text.erase(at, blow == 0 ? text.npos : size);
        else
            text.insert(blow == 2 ? number(text.size() + 1) : at, pieces[blow - 2]);
        text.resize(std::min<size_t>(text.size(), 6000));
    }

    std::mt19937 random_{7622};
};

TEST(HostileTable, OfStationsStaysInItsList) {
    Hostile hostile;
    const auto list = std::make_unique<Guarded<station_list>>();
    wireless_conf bss[2] = {};
    size_t stations = 0;
    for (int i = 0; i < 60'000; ++i) {
        const std::string text = hostile.table(kStations);
        const auto start = static_cast<uint32_t>(STATION_LIST_MAX - hostile.number(6));
        list->record.count = start;
        platform::StationTable table(list->record, bss, 1);
        for (std::string_view rest = text; !rest.empty();) {
            const std::string_view line =
                rest.substr(0, std::min<size_t>(rest.find('\n'), 254) + 1);
            rest.remove_prefix(line.size());
            table.take_line(line.substr(0, line.find('\0')));
        }
        const uint32_t count = list->record.count;
        ASSERT_LE(count, uint32_t{STATION_LIST_MAX});
        ASSERT_TRUE(list->intact_from(list->record.entries + count)) << i;
        stations += count - start;
        memset(list->record.entries + start, 'x', (count - start) * sizeof(station_entry));
    }
    EXPECT_GT(stations, 60'000u);
}

TEST(HostileTable, OfASurveyStaysInItsEntry) {
    Hostile hostile;
    Guarded<ap_entry> entry;
    size_t entries = 0;
    for (int i = 0; i < 60'000; ++i) {
        const std::string text = hostile.table(kSurvey);
        platform::SurveyLines lines(text, 512);
        while (const auto line = lines.next()) {
            const platform::SurveyLine columns(*line);
            if (columns.empty()) continue;
            columns.fill(entry.record, 2407, 1);
            ASSERT_TRUE(entry.intact_from(entry.after)) << i;
            ASSERT_LE(strnlen(entry.record.ssid, 128), 32u) << i;
            ASSERT_LT(strnlen(entry.record.bssid, 40), 40u) << i;
            ASSERT_LT(strnlen(entry.record.element.text, 16), 16u) << i;
            ++entries;
        }
    }
    EXPECT_GT(entries, 60'000u);
}

}  // namespace
