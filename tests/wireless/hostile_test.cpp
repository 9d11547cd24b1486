// Damaged tables: whatever a driver or a neighbour prints stays within the records.
#include <cstring>
#include <memory>
#include <random>

#include "platform/wireless.h"
#include "support/driver.h"
#include "wireless/station_table.h"
#include "wireless/survey_table.h"

namespace {

// Entry size and all: a record between two guards.
template <class T>
struct Guarded {
    char before[64];
    T record;
    char after[64];

    Guarded() { memset(this, 'x', sizeof *this); }
    bool intact() const {
        return memcmp(this, fresh().get(), sizeof before) == 0 &&
               memcmp(after, fresh()->after, sizeof after) == 0;
    }
    // Nothing of the record is written from that member on.
    bool untouched_from(const void* member) const {
        const auto offset = static_cast<size_t>(static_cast<const char*>(member) -
                                                reinterpret_cast<const char*>(this));
        return memcmp(member, reinterpret_cast<const char*>(fresh().get()) + offset,
                      sizeof *this - offset) == 0;
    }
    static const std::unique_ptr<Guarded>& fresh() {
        static const auto value = std::make_unique<Guarded>();
        return value;
    }
};

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
    void strike(std::string& text) {
        const size_t at = number(text.size() + 1);
        const size_t size = number(number(20) == 0 ? 3000 : 40);
        switch (number(8)) {
            case 0:
                text.resize(at);
                break;
            case 1:
                text.erase(at, size);
                break;
            case 2:
                text.insert(number(text.size() + 1), text.substr(at, size));
                break;
            case 3:
                text.insert(at, 1, '\0');
                break;
            case 4:
                text.insert(at, size, static_cast<char>(number(256)));
                break;
            case 5:
                text.insert(at, size, " \t\n/(-C9"[number(8)]);
                break;
            case 6:
                text.insert(at, kNumbers[number(std::size(kNumbers))]);
                break;
            default:
                text.insert(at, text.substr(0, 2000));
                break;
        }
        text.resize(std::min<size_t>(text.size(), 6000));
    }

    static constexpr const char* kNumbers[] = {
        "-2147483648 ", "99999999999999999999999 ", "2147483647(", "-1 ", "/-/", "YES NO YES "};
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
        ASSERT_TRUE(list->intact() && list->untouched_from(list->record.entries + count)) << i;
        stations += count - start;
        for (uint32_t k = start; k < count; ++k) memset(list->record.entries + k, 'x', 280);
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
            const platform::SurveyLine survey(*line);
            if (survey.empty()) continue;
            survey.fill(entry.record, 2407, 1);
            ASSERT_TRUE(entry.intact()) << i;
            ASSERT_LE(strnlen(entry.record.ssid, 128), 32u) << i;
            ASSERT_LT(strnlen(entry.record.bssid, 40), 40u) << i;
            ASSERT_LT(strnlen(entry.record.element.text, 16), 16u) << i;
            ++entries;
        }
    }
    EXPECT_GT(entries, 60'000u);
}

// The same through the library's doors.
class HostileDriver : public harness::Driver {
protected:
    Hostile hostile;
};

TEST_F(HostileDriver, CannotLeaveTheStationList) {
    std::string text;
    on_command = [&](const std::string&) {
        write("/var/run/station_table.ra0", text);
        return 0;
    };
    const auto list = std::make_unique<Guarded<station_list>>();
    strcpy(list->record.ifname, "ra0");
    for (int i = 0; i < 1000; ++i) {
        text = hostile.table(kStations);
        for (size_t more = hostile.number(6); more > 0; --more) text += text.substr(0, 20'000);
        ASSERT_EQ(0, wireless_api_get_station_list(&list->record));
        const uint32_t count = list->record.count;
        ASSERT_LE(count, uint32_t{STATION_LIST_MAX});
        ASSERT_TRUE(list->intact() && list->untouched_from(list->record.entries + count)) << i;
        memset(list->record.entries, 'x', count * sizeof(station_entry));
    }
}

// A line whose channel is refused leaves its channel words in the entry behind the last.
TEST_F(HostileDriver, CannotLeaveTheSurveyList) {
    const auto list = std::make_unique<Guarded<ap_list>>();
    strcpy(list->record.ifname, "ra0");
    for (int i = 0; i < 1000; ++i) {
        survey = hostile.table(kSurvey);
        for (size_t more = hostile.number(6); more > 0; --more) survey += survey.substr(0, 20'000);
        survey_length = hostile.number(9) == 0 ? 65535 : 0;
        platform_wireless_api_get_ap_list(&list->record);
        const uint32_t count = list->record.count;
        ASSERT_LE(count, uint32_t{AP_LIST_MAX});
        if (count < AP_LIST_MAX) memset(&list->record.entries[count].channel, 'x', 8);
        ASSERT_TRUE(list->intact() && list->untouched_from(list->record.entries + count)) << i;
        memset(list->record.entries, 'x', count * sizeof(ap_entry));
    }
}

}  // namespace
