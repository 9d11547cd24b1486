// The driver's statistics: radar detection and the repeater client's link.
#include "fuzz/target.h"
#include "platform/wireless.h"

using namespace fuzz_target;

void fuzz(Pieces& input) {
    board::state().radios[0].client = {"upstream", "00:11:22:AA:BB:CC", {}, 0};
    outside().essid = input.text();
    outside().text = input.rest();

    Output<dfs_info> info;
    const int known = wireless_get_dfs_info("rai0", info.get());
    CLAIM(known == 1 ? info->remaining >= 0 || !info.untouched() : info.untouched());

    Output<char[32]> first;
    Output<char[32]> second;
    if (mt762x_get_apcli_status("apcli0", *first.get(), *second.get()) == 1) {
        CLAIM(is_terminated(*first.get()) && is_terminated(*second.get()));
    } else {
        CLAIM(second.untouched());
    }
    mt762x_get_apcli_status("apcli0", nullptr, nullptr);

    Output<ap_entry> entry;
    if (wireless_api_get_mbridge_status("apcli0", entry.get()) == 1)
        CLAIM(is_terminated(entry->ssid) && entry->signal <= 100);
    rt61_get_wireless_link_speed("apcli0");
}
