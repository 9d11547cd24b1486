#include "platform/wireless.h"
#include "platform/wlmap.h"
#include "src/host/radios.h"
#include "src/host/runner.h"
#include "src/profile/acl.h"
#include "src/profile/list_value.h"
#include "src/profile/profile_list.h"
#include "src/support/heap.h"
#include "src/wlmap/ifname.h"

using namespace platform;

namespace {

// A BSS with the names that the driver and the profile know it by.
struct BssPlace {
    explicit BssPlace(uint32_t wl_index)
        : wl_mode(static_cast<int32_t>(wl_index >> 16)),
          number(static_cast<int32_t>(wl_index & 0xFFFF)),
          profile(get_racfg_filename(wl_mode)),
          ifname(IfName::bss(wl_mode, number)) {}

    int32_t wl_mode;
    int32_t number;
    ProfileOnDisk profile;
    IfName ifname;
};

bool uses_8021x(const BssPlace& place) {
    const IfName main_name = IfName::main(place.wl_mode);
    const BssSet set(main_name.c_str());
    return place.number < set.count() &&
           wireless_check_8021x_enabled(&set.configured()[static_cast<size_t>(place.number)]) != 0;
}

// Hands the list to the driver and to its profile; false without memory for it.
bool apply_list(const BssPlace& place) {
    const Heap<char> list(kAclSize);
    if (!list.ok()) return false;

    macauth_acl_string(place.wl_mode, place.number, list.get());
    run_host(Command<kAclSize + 256>("/sbin/iwpriv %s set ACLAddEntry=\"%s\"", place.ifname.view(),
                                     list.get()));
    place.profile.set(NumberedKey("AccessControlList", place.number), list.get());
    return true;
}

}  // namespace

int wireless_macauth_set_policy(uint32_t wl_index, int policy) {
    const BssPlace place(wl_index);
    const int value = access_policy(policy);
    run_shell(Command<256>("/sbin/iwpriv %s set AccessPolicy=%d", place.ifname.view(), value));
    TextBuffer<16> text;
    text.put_decimal(value);
    place.profile.set(NumberedKey("AccessPolicy", place.number), text.c_str());
    return 0;
}

int wireless_apply_macauth(uint32_t wl_index) {
    const BssPlace place(wl_index);
    run_host(Command<256>("/sbin/iwpriv %s set ACLClearAll=1", place.ifname.view()));
    if (!apply_list(place)) return 0;
    if (macauth_get_policy(wl_index) != 0 && uses_8021x(place)) signal_wan();
    return 0;
}
