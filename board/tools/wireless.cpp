// iwpriv and ated: the Wi-Fi driver's settings, tables and calibration data.
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "board/model/flash.h"
#include "board/model/interfaces.h"
#include "board/model/radio_driver.h"
#include "board/model/stations.h"
#include "board/model/wps_run.h"
#include "board/store/key_file.h"
#include "board/tools/tools.h"

namespace board::tools {
namespace {

std::optional<size_t> hexadecimal(const std::string& text) {
    char* end = nullptr;
    const unsigned long number = std::strtoul(text.c_str(), &end, 16);
    if (end == text.c_str() || *end != '\0') return std::nullopt;
    return number;
}

// A word's low byte comes first in the image.
bool put_word(std::string& image, size_t base, const KeyValue& word) {
    const auto offset = hexadecimal(std::string(word.key));
    const auto value = hexadecimal(std::string(word.value));
    if (!offset || !value || base + *offset + 2 > image.size()) return false;
    image[base + *offset] = static_cast<char>(*value & 0xff);
    image[base + *offset + 1] = static_cast<char>(*value >> 8 & 0xff);
    return true;
}

int report_scan(const std::string& ifname) {
    std::printf("%-8s  get_scan_status:%d\n", ifname.c_str(), poll_scan(radio_of(ifname)) ? 1 : 0);
    return 0;
}

int print(const std::string& text) {
    std::fputs(text.c_str(), stdout);
    return 0;
}

// A setting that is an order, as WscGenPinCode, may come without a value.
int set(const std::string& ifname, const std::string& setting) {
    const KeyValue pair = split_key_value(setting).value_or(KeyValue{setting, ""});
    if (pair.key == "SiteSurvey" && !start_survey(ifname))
        return fail(100, ifname + "  Network is down");
    store_driver_setting(ifname, pair.key, pair.value);
    take_wps_setting(ifname, pair.key, pair.value);
    return 0;
}

// What was set with "iwpriv IF e2p" goes into the radio's part of the calibration partition.
int sync_eeprom(const std::string& ifname) {
    const auto partition = find_partition("Factory");
    const auto base = hexadecimal(radio_index_value(ifname, "EEPROM_offset").value_or(""));
    if (!partition || !base) return fail(1, "ated: " + ifname + " has no calibration data");
    std::string image = read_partition(*partition);
    const KeyFile words = eeprom_words(ifname);
    for (const std::string& line : words.lines())
        if (const auto word = split_key_value(line); !word || !put_word(image, *base, *word))
            return fail(1, "ated: bad calibration word " + line);
    return write_partition(*partition, image) ? 0 : 1;
}

}  // namespace

int iwpriv(Words words) {
    if (words.size() < 2) return fail(255, "Usage: iwpriv <interface> <command> [value]");
    const std::string& ifname = words[0];
    const std::string& command = words[1];
    if (!interface_exists(ifname))
        return fail(237, ifname + "  no private ioctls: no such interface");
    if (words.size() == 2 && command == "get_scan_status") return report_scan(ifname);
    if (words.size() == 2 && command == "get_mac_table") return print(station_table(ifname));
    if (words.size() == 2 && command == "stat") return print(driver_statistics(ifname));
    if (words.size() == 3 && command == "set") return set(ifname, words[2]);

    const auto pair = words.size() == 3 ? split_key_value(words[2]) : std::nullopt;
    if (!pair || command != "e2p") return fail(255, ifname + "  invalid command: " + command);
    store_eeprom_word(ifname, pair->key, pair->value);
    return 0;
}

int ated(Words words) {
    if (words.size() != 2 || !words[0].starts_with("-i") || words[1] != "-csync eeprom all")
        return fail(1, "Usage: ated -i<interface> -c\"sync eeprom all\"");
    return sync_eeprom(words[0].substr(2));
}

}  // namespace board::tools
