// The words of the switch's registers: its address table, its counters.
#include <net/if.h>

#include "src/host/host.h"

#include "fuzz/target.h"
#include "platform/switch.h"

using namespace fuzz_target;

namespace {

constexpr unsigned long kRead = 0x89F3;
constexpr uint32_t kSearchEnded = 0x4000;

std::string_view words;

// One word of the input for each reading; after the last one the search has ended.
int answer_register(void* record) {
    uint32_t value = kSearchEnded;
    const size_t size = std::min(words.size(), sizeof value);
    if (size != 0) std::memcpy(&value, words.data(), size);
    words.remove_prefix(size);
    char* const data = static_cast<ifreq*>(record)->ifr_data;
    std::memcpy(data + 12, &value, sizeof value);
    return 0;
}

void expect_sound(const std::unique_ptr<switch_mac_entry[]>& entries, int count, int port_mask) {
    for (int i = 0; i < count; ++i) {
        CLAIM((entries[static_cast<size_t>(i)].mac[0] & 1) == 0);
        CLAIM((entries[static_cast<size_t>(i)].port_map & port_mask) != 0);
    }
}

}  // namespace

void fuzz(Pieces& input) {
    constexpr int kCapacity = 4;
    outside().on_ioctl[kRead] = answer_register;
    words = input.rest();
    const std::unique_ptr<switch_mac_entry[]> entries(new switch_mac_entry[kCapacity]);
    const int count = ethswitch_get_all_macentry(entries.get(), kCapacity, 0x1F);
    CLAIM(count >= 0 && count <= kCapacity);
    expect_sound(entries, count, 0x1F);

    words = input.rest();
    wired_station_list list = {};
    CLAIM(apcp_get_stalist_from_ethswitch(&list) == static_cast<int>(list.count));
    free_all_list(&list, nullptr);
    words = input.rest();
    ethswitch_get_mac_port_link("00:00:00:04:00:00");

    words = input.rest();
    Output<port_counters> counters;
    CLAIM(get_eport_stat(1, counters.get()) == 0);
    CLAIM(counters.untouched(64, 72));
    CLAIM(get_eport_stat(9, counters.get()) == -1);
}
