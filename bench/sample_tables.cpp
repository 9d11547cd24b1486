#include "bench/sample_tables.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

std::string station_table(int rows) {
    std::string text = "ra0       get_mac_table:\nV2 MAC AID PSM AUTH RSSI\n";
    for (int i = 0; i < rows; ++i) {
        char line[128];
        std::snprintf(line, sizeof line,
                      "0011223344%02x %d %d 0 1 %d %d %d %d %lld -%d/-47/-127/-127\n", i, i % 4,
                      i + 1, -40 - i % 50, i % 100, 866, 123456 * i, 98765432101LL * i, 45 + i % 9);
        text += line;
    }
    return text;
}

std::string survey_table(int rows) {
    std::string text =
        "Ch  SSID                             BSSID               Security       Siganl(%)W-Mode\n";
    const char* const kSecurity[] = {"WPA2PSK/AES", "WPA1PSKWPA2PSK/TKIPAES", "NONE", "WPA2/AES"};
    for (int i = 0; i < rows; ++i) {
        char line[256];
        std::snprintf(
            line, sizeof line, "%-4d%-33s00:11:22:aa:bb:%02x   %s %d(-%d) 11b/g/n %s Infra %s%s\n",
            1 + i % 13, "A neighbour's network", i, kSecurity[i % 4], i % 100, 50 + i % 40,
            i % 3 == 0 ? "ABOVE" : "NONE", i % 2 == 0 ? "YES PBC" : "YES PIN",
            i % 4 == 0 ? " 10203040 001122334455 66778899aabb router          " : "");
        text += line;
    }
    if (text.size() > 32768) std::abort();  // what the library asks the driver for
    return text;
}

}  // namespace bench
