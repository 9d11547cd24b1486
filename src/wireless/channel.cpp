#include "src/wireless/channel.h"

#include "src/driver/scan.h"
#include "src/host/host.h"
#include "src/support/text.h"

namespace platform {

int mtk_auto_channel_select(const char* ifname, wireless_conf& radio) {
    const bool was_up = get_ifstatus(ifname) != 0;
    if (!was_up) ifup(ifname);
    const TextCopy<sizeof radio.country_code + 1> country(field_text(radio.country_code));
    wireless_api_get_best_channel2(ifname, country.c_str(), radio.bandwidth, &radio.channel);
    wireless_wait_scan_status(ifname, 10);
    if (!was_up) ifdown(ifname);
    return 1;
}

}  // namespace platform
