// The sections of a radio's profile, in the order in which the profile writer sets them.
#pragma once

#include <stdint.h>

#include <span>

#include "platform/records.h"
#include "src/profile/profile_list.h"

namespace platform {

// What the records say about one radio.
struct RadioConf {
    int32_t wl_mode;
    const wireless_conf& radio;          // record 0
    std::span<const wireless_conf> bss;  // the configured records

    int count() const { return static_cast<int>(bss.size()); }
};

void set_radio_keys(ProfileList& profile, const wireless_conf& radio);
void set_power_keys(ProfileList& profile, const wireless_conf& radio);
void set_bss_keys(ProfileList& profile, const RadioConf& conf);
void set_client_keys(ProfileList& profile, const wireless_conf& radio);
void set_access_keys(ProfileList& profile, const RadioConf& conf);

}  // namespace platform
