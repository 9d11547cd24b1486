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
    void set_ifname(const char* ifname) {
        memset(list.ifname, 0, sizeof list.ifname);
        strcpy(list.ifname, ifname);
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
        set_ifname(ifname);
        return platform_wireless_api_get_ap_list(&list);
    }
    // The entry of a lone line in a list of 'x'.
    const ap_entry& entry_of(const std::string& text, const char* ifname = "ra0") {
        clear();
        EXPECT_EQ(0, take(kHeader + text, ifname));
        EXPECT_EQ(7u, list.type);
        EXPECT_EQ(1u, list.count) << text;
        EXPECT_EQ('x', list.entries[1].ssid[0]);
        return list.entries[0];
    }

    const std::string kHeader = line("BSSID Security Siganl(%) W-Mode ExtCH NT WPS", "SSID", "Ch");
    const std::string kBssid = "00:11:22:aa:bb:cc ";
    const std::string kUpToType = kBssid + "WPA2PSK/AES 80(-55) 11b/g/n NONE Infra ";
    uint32_t flags = 0x78787879;  // of the entry before it is filled
    ap_list list;
};

}  // namespace harness
