#include "bench/plain_parsers.h"

#include <cctype>
#include <cinttypes>
#include <cstring>

namespace bench {
namespace {

struct Word {
    const char* text;
    int32_t code;
};

int32_t code_of(const Word* words, const char* text, int32_t otherwise) {
    for (; words->text != nullptr; ++words)
        if (std::strcmp(words->text, text) == 0) return words->code;
    return otherwise;
}

constexpr Word kAuths[] = {
    {"WPA",            4 },
    {"WPAPSK",         5 },
    {"WPANONE",        7 },
    {"WPA2",           8 },
    {"WPA1WPA2",       11},
    {"WPA2PSK",        9 },
    {"WPAPSKWPA2PSK",  10},
    {"WPA1PSKWPA2PSK", 10},
    {"WEP",            2 },
    {nullptr,          0 },
};
constexpr Word kCiphers[] = {
    {"TKIP",    3},
    {"AES",     4},
    {"TKIPAES", 5},
    {"WEP",     1},
    {nullptr,   0},
};

}  // namespace

void read_stations(FILE* text, station_list& list, const wireless_conf* bss, int bss_count) {
    char line[256];
    bool v2 = false;
    for (int i = 0; i < 2 && std::fgets(line, sizeof line, text) != nullptr; ++i)
        v2 = std::strncmp(line, "V2", 2) == 0;
    while (list.count < STATION_LIST_MAX && std::fgets(line, sizeof line, text) != nullptr) {
        station_entry& entry = list.entries[list.count];
        char mac[6][3];
        char column[16];
        char chains[128];
        int end = 0;
        if (std::sscanf(line, "%2s%2s%2s%2s%2s%2s %15s %d %*s %*s %d %d %d%n", mac[0], mac[1],
                        mac[2], mac[3], mac[4], mac[5], column, &entry.column3, &entry.column6,
                        &entry.column7, &entry.column8, &end) < 11)
            continue;
        std::snprintf(entry.mac, sizeof entry.mac, "%s-%s-%s-%s-%s-%s", mac[0], mac[1], mac[2],
                      mac[3], mac[4], mac[5]);
        for (char& c : entry.mac) c = static_cast<char>(std::toupper(static_cast<uint8_t>(c)));
        int number = 4096;
        if (column[0] != 'C') std::sscanf(column, "%d", &number);
        entry.wl_index = static_cast<uint32_t>(number);
        if (number < bss_count) {
            std::memset(entry.ssid, 0, sizeof entry.ssid);
            std::memcpy(entry.ssid, bss[number].ssid, 32);
        }
        ++list.count;
        if (!v2) {
            std::sscanf(line + end, "%d %d", &entry.column9, &entry.column10);
        } else if (std::sscanf(line + end, "%" SCNu64 " %" SCNu64 " %127s", &entry.column9_v2,
                               &entry.column10_v2, chains) == 3) {
            int32_t* const c = entry.chain;
            std::memset(c, 0, sizeof entry.chain);
            const int count = std::sscanf(chains, "%d/%d/%d/%d/%d/%d/%d/%d", &c[0], &c[1], &c[2],
                                          &c[3], &c[4], &c[5], &c[6], &c[7]);
            entry.chain_best = 0;
            for (int i = 0; i < count; ++i)
                if (entry.chain_best == 0 || entry.chain_best < c[i]) entry.chain_best = c[i];
        }
    }
}

void read_survey(FILE* text, ap_list& list) {
    char line[512];
    while (list.count < AP_LIST_MAX && std::fgets(line, sizeof line, text) != nullptr) {
        ap_entry& entry = list.entries[list.count];
        int32_t channel = 0;
        if (std::sscanf(line, "%d", &channel) < 1 || channel == 0) continue;
        char security[128] = "";
        char extension[16] = "";
        char type[16] = "";
        char wps[8] = "";
        char method[8] = "";
        int end = 0;
        char ssid[33] = "";
        std::sscanf(line + 4, "%32c", ssid);
        for (size_t last = 32; last > 0 && ssid[last - 1] == ' '; --last) ssid[last - 1] = '\0';
        std::strcpy(entry.ssid, ssid);
        std::sscanf(line + 37, "%39s %127s %d(%d) %*s %15s %15s %7s %7s%n", entry.bssid, security,
                    &entry.signal, &entry.rssi, extension, type, wps, method, &end);
        for (char& c : entry.bssid) c = static_cast<char>(std::toupper(static_cast<uint8_t>(c)));
        char auth[64] = "";
        char cipher[64] = "";
        std::sscanf(security, "%63[^/]/%63s", auth, cipher);
        entry.auth_mode = code_of(kAuths, auth, 1);
        entry.encryption = code_of(kCiphers, cipher, 0);
        entry.channel.channel = entry.channel.ext_channel = channel;
        if (std::strcmp(extension, "ABOVE") == 0) entry.channel.ext_channel += 2;
        if (std::strcmp(extension, "BELOW") == 0) entry.channel.ext_channel -= 2;
        entry.channel.frequency_mhz = channel * 5 + 2407;
        entry.network_type = std::strcmp(type, "Infra") == 0 ? 0 : 1;
        entry.flags = std::strcmp(wps, "YES") == 0 && std::strcmp(method, "PBC") == 0 ? 1 : 0;
        entry.seen_at = 1;
        std::memset(&entry.element, 0, sizeof entry.element);
        auto* const b = reinterpret_cast<uint8_t*>(&entry.element);
        std::sscanf(line + 37 + end,
                    "%2hhx%2hhx%2hhx%2hhx %2hhx%2hhx%2hhx%2hhx%2hhx%2hhx "
                    "%2hhx%2hhx%2hhx%2hhx%2hhx%2hhx %15c",
                    &b[0], &b[1], &b[2], &b[3], &b[4], &b[5], &b[6], &b[7], &b[8], &b[9], &b[10],
                    &b[11], &b[12], &b[13], &b[14], &b[15], entry.element.text);
        ++list.count;
    }
}

}  // namespace bench
