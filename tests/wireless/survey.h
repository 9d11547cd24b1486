// Survey texts as the driver prints them, read into a list of 'x'.
#pragma once

#include <cstring>
#include <string>

#include "platform/wireless.h"
#include "support/driver.h"

namespace harness {

class Survey : public Driver {
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

}  // namespace harness
