#include "bench/ordinary.h"

#include <ctype.h>
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "bench/system.h"
#include "src/host/host.h"

namespace bench {

station_list stations;
ap_list networks;

namespace {

struct Word {
    const char* text;
    int32_t auth;
    int32_t cipher;
};

constexpr Word kSecurity[] = {
    {"WPA2PSK/AES",            9,  4},
    {"WPA1PSKWPA2PSK/TKIPAES", 10, 5},
    {"NONE",                   1,  0},
    {"WPA2/AES",               8,  4},
};

void put_upper(char* text) {
    for (; *text != '\0'; ++text) *text = static_cast<char>(toupper(static_cast<uint8_t>(*text)));
}

void put_bytes(uint64_t value, uint8_t* bytes, int count) {
    for (; count > 0; value >>= 8) bytes[--count] = static_cast<uint8_t>(value);
}

void put_station(const char* line, const wireless_conf* bss, int bss_count) {
    station_entry& entry = stations.entries[stations.count++];
    char mac[13];
    char chains[128];
    int number = 0;
    sscanf(line, "%12s %d %d %*s %*s %d %d %d %" SCNu64 " %" SCNu64 " %127s", mac, &number,
           &entry.column3, &entry.column6, &entry.column7, &entry.column8, &entry.column9_v2,
           &entry.column10_v2, chains);
    put_upper(mac);
    for (int i = 0; i < 6; ++i) {
        memcpy(entry.mac + 3 * i, mac + 2 * i, 2);
        entry.mac[3 * i + 2] = i < 5 ? '-' : '\0';
    }
    entry.wl_index = static_cast<uint32_t>(number);
    memset(entry.ssid, 0, sizeof entry.ssid);
    if (number < bss_count) memcpy(entry.ssid, bss[number].ssid, 32);
    memset(entry.chain, 0, sizeof entry.chain);
    entry.chain_best = 0;
    int32_t* chain = entry.chain;
    for (char* next = strtok(chains, "/"); next != nullptr; next = strtok(nullptr, "/")) {
        *chain = atoi(next);
        if (entry.chain_best == 0 || entry.chain_best < *chain) entry.chain_best = *chain;
        ++chain;
    }
}

void put_network(const char* line) {
    ap_entry& entry = networks.entries[networks.count];
    int32_t channel = 0;
    char security[128];
    char extension[16];
    char type[16];
    char wps[8];
    char method[8];
    char element[3][13];
    const int columns =
        sscanf(line, "%d %32c %39s %127s %d(%d) %*s %15s %15s %7s %7s %8s %12s %12s %15c", &channel,
               entry.ssid, entry.bssid, security, &entry.signal, &entry.rssi, extension, type, wps,
               method, element[0], element[1], element[2], entry.element.text);
    if (columns < 10) return;
    ++networks.count;
    for (int last = 31; last >= 0 && entry.ssid[last] == ' '; --last) entry.ssid[last] = '\0';
    put_upper(entry.bssid);
    for (const Word& word : kSecurity) {
        if (strcmp(word.text, security) != 0) continue;
        entry.auth_mode = word.auth;
        entry.encryption = word.cipher;
        break;
    }
    entry.channel.channel = entry.channel.ext_channel = channel;
    if (strcmp(extension, "ABOVE") == 0) entry.channel.ext_channel += 2;
    if (strcmp(extension, "BELOW") == 0) entry.channel.ext_channel -= 2;
    entry.channel.frequency_mhz = channel * 5 + 2407;
    entry.network_type = strcmp(type, "Infra") == 0 ? 0 : 1;
    entry.flags = strcmp(wps, "YES") == 0 && strcmp(method, "PBC") == 0 ? 1 : 0;
    entry.seen_at = 1;
    if (columns < 14) return;
    put_bytes(strtoull(element[0], nullptr, 16), entry.element.first, 4);
    put_bytes(strtoull(element[1], nullptr, 16), entry.element.second, 6);
    put_bytes(strtoull(element[2], nullptr, 16), entry.element.third, 6);
}

}  // namespace

int read_stations() {
    wireless_conf bss[PLATFORM_BSS_MAX];
    const int bss_count = read_all_mbss_conf("ra0", bss, PLATFORM_BSS_MAX);
    FILE* const file = fopen(kStationPath, "r");
    char line[256];
    for (int i = 0; i < 2; ++i) fgets(line, sizeof line, file);
    stations.count = 0;
    while (fgets(line, sizeof line, file) != nullptr) put_station(line, bss, bss_count);
    return fclose(file);
}

int read_survey() {
    FILE* const file = fopen(kSurveyPath, "r");
    char line[512];
    networks.count = 0;
    while (fgets(line, sizeof line, file) != nullptr) put_network(line);
    return fclose(file);
}

int find_name() {
    FILE* const file = fopen(kIndexPath, "r");
    char line[256];
    while (fgets(line, sizeof line, file) != nullptr)
        if (strcmp(strtok(line, "="), "INDEX1_ext_ifname") == 0) break;
    return fclose(file);
}

int find_pin() {
    FILE* const file = fopen(kPinPath, "r");
    char line[256];
    int n[10];
    while (fgets(line, sizeof line, file) != nullptr)
        if (sscanf(line, "%d:%d%d%d%d%d%d%d%d%d", &n[0], &n[1], &n[2], &n[3], &n[4], &n[5], &n[6],
                   &n[7], &n[8], &n[9]) == 10 &&
            n[0] == kButtonPin)
            break;
    return fclose(file);
}

int list_addresses() {
    const mac_filter_table* const table = macdb_read(0, 256);
    const auto* const entries = reinterpret_cast<const mac_filter_entry*>(table + 1);
    static char list[8192];
    int used = 0;
    for (int i = 0; i < table->count; ++i) {
        const uint8_t* const mac = entries[i].mac;
        used += sprintf(list + used, "%02X:%02X:%02X:%02X:%02X:%02X;", mac[0], mac[1], mac[2],
                        mac[3], mac[4], mac[5]);
    }
    return used;
}

}  // namespace bench
