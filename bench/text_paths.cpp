// What is looked up in files and read from the driver's texts. The limit is one read of the same
// text and the host calls; a user would ask awk.
#include <cstring>
#include <memory>

#include "bench/path.h"
#include "bench/sample_tables.h"
#include "bench/system.h"
#include "board/host/state.h"
#include "platform/platform.h"
#include "src/host/host.h"

namespace bench {
namespace {

constexpr const char* kIndexPath = "/etc/wireless/l1profile.dat";
constexpr const char* kPinPath = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
constexpr const char* kSurveyPath = "/tmp/survey";
constexpr const char* kStationPath = "/var/run/station_table.ra0";

constexpr const char* kRadios =
    "INDEX0_main_ifname=ra0\nINDEX0_ext_ifname=ra\nINDEX0_apcli_ifname=apcli\n"
    "INDEX0_profile_path=/etc/wireless/radio0.dat\nINDEX0_EEPROM_offset=0x0\n"
    "INDEX1_main_ifname=rai0\nINDEX1_ext_ifname=rai\nINDEX1_apcli_ifname=apclii\n"
    "INDEX1_profile_path=/etc/wireless/radio1.dat\nINDEX1_EEPROM_offset=0x8000\n";

}  // namespace

// The radios' entries behind those of others.
void write_index(int lines) {
    std::string text;
    for (int i = kRadioLines; i < lines; ++i) text += "OTHER" + std::to_string(i) + "_key=value\n";
    write_file(kIndexPath, text + kRadios);
}

namespace {

void find_name_in_text() {
    const std::string_view text = read_whole(kIndexPath);
    const size_t at = text.find("INDEX1_ext_ifname=");
    static char name[PLATFORM_IFNAME_SIZE];
    text.substr(at, text.find('\n', at) - at).copy(name, sizeof name);
    keep(name);
}

// The columns that the records hold.
constexpr const char* kNameProgram = R"(-F= '$1 == "INDEX1_ext_ifname" { print $2 2; exit }')";
constexpr const char* kStationProgram =
    R"('NR > 2 { split($11, c, "/"); print toupper($1), $2, $3, $6, $7, $8, $9, $10, c[1] }')";
constexpr const char* kSurveyProgram =
    R"('NR > 1 { s = substr($0, 5, 32); sub(/ +$/, "", s); split(substr($0, 38), f); )"
    R"(print $1, s, f[1], f[2], f[3], f[5] }')";

std::string awk(const std::string& program, const char* path) {
    return "awk " + program + ' ' + in_tree(path) + " >/dev/null";
}

station_list& stations() {
    static const auto list = std::make_unique<station_list>();
    std::strcpy(list->ifname, "ra0");
    return *list;
}

ap_list& networks() {
    static const auto list = std::make_unique<ap_list>();
    std::strcpy(list->ifname, "ra0");
    return *list;
}

void expect_rows(uint32_t listed, int rows) {
    if (listed != static_cast<uint32_t>(rows)) give_up("rows are missing");
}

void prepare_stations(int rows) {
    write_index(kRadioLines);
    write_file(kStationPath, station_table(rows));
    wireless_api_get_station_list(&stations());
    expect_rows(stations().count, rows);
}

void read_stations_bare() {
    static wireless_conf records[PLATFORM_BSS_MAX];
    read_all_mbss_conf("ra0", records, PLATFORM_BSS_MAX);
    keep(read_whole(kStationPath).data());
}

void prepare_networks(int rows) {
    write_index(kRadioLines);
    board::state().radios[0].valid_channels = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
    survey_answer = survey_table(rows);
    write_file(kSurveyPath, survey_answer);
    platform_wireless_api_get_ap_list(&networks());
    expect_rows(networks().count, rows);
}

void read_networks_bare() {
    keep(read_whole(kSurveyPath).data());
    for (uint32_t i = 0; i < networks().count; ++i)
        wireless_check_channel_valid("ra0", 0, 20, networks().entries[i].channel.channel);
}

// The button's pin is the last, the same in every file: the library asks for it once.
void write_pins(int pins) {
    constexpr int kButton = 999;
    std::string text = "PIN: (MODE)(PULL_SEL)...\n====\n";
    for (int pin = 1; pin <= pins; ++pin)
        text += std::to_string(pin < pins ? pin : kButton) + ": 1 0 1 1 0 0 0 0 0\n";
    write_file(kPinPath, text);
    board::state().hw.reset_button_gpio = kButton;
}

std::string ask_awk_for_pin() {
    const std::string pin = std::to_string(board::state().hw.reset_button_gpio);
    return awk("-F'[: ]+' '$1 == " + pin + " { print $5; exit }'", kPinPath);
}

void read_pins_bare() {
    static hw_info hw;
    get_si("hw", &hw);
    keep(read_whole(kPinPath).data());
}

void set_name_path(Path& path) {
    path.name = "interface name";
    path.unit = "lines of the index file";
    path.sizes = {10, 100, 1000};
    path.prepare = write_index;
    path.library = [] { keep(get_wl_ifname(0x10002)); };
    path.limit = find_name_in_text;
    path.shell = [] { return awk(kNameProgram, kIndexPath); };
}

void set_station_path(Path& path) {
    path.name = "station list";
    path.unit = "stations";
    path.sizes = {8, 32, STATION_LIST_MAX};
    path.prepare = prepare_stations;
    path.library = [] { wireless_api_get_station_list(&stations()); };
    path.limit = read_stations_bare;
    path.shell = [] { return awk(kStationProgram, kStationPath); };
}

void set_survey_path(Path& path) {
    path.name = "survey list";
    path.unit = "networks";
    path.sizes = {8, 64, AP_LIST_MAX};
    path.prepare = prepare_networks;
    path.library = [] { platform_wireless_api_get_ap_list(&networks()); };
    path.limit = read_networks_bare;
    path.shell = [] { return awk(kSurveyProgram, kSurveyPath); };
}

void set_pin_path(Path& path) {
    path.name = "button pin";
    path.unit = "lines of the pin file";
    path.sizes = {10, 50, 100};
    path.prepare = write_pins;
    path.library = [] { pushed_reset_button(); };
    path.limit = read_pins_bare;
    path.shell = ask_awk_for_pin;
}

}  // namespace

void add_text_paths(std::vector<Path>& paths) {
    for (const auto set : {set_name_path, set_station_path, set_survey_path, set_pin_path})
        set(paths.emplace_back());
}

}  // namespace bench
