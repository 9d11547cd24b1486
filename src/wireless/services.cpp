#include "platform/gpio.h"
#include "platform/wireless.h"
#include "platform/wlmap.h"
#include "src/driver/object.h"
#include "src/host/radios.h"
#include "src/host/runner.h"
#include "src/support/message.h"
#include "src/support/table.h"
#include "src/wlmap/ifname.h"

using namespace platform;

namespace {

struct AuthenticatorRow {
    std::string_view ifname;
    const char* daemon;
};

// A radio without a row has no 802.1X authenticator.
constexpr AuthenticatorRow kAuthenticators[] = {
    {"ra0",  "rt2860apd"  },
    {"rai0", "rtinicapd"  },
    {"rae0", "rtwifi3apd" },
    {"rax0", "rt2860apd_x"},
};
static_assert(is_key(kAuthenticators, &AuthenticatorRow::ifname));

void wireless_restart_8021xd_if(const char* ifname, const char* daemon) {
    run_host(Command<128>("killall %s", daemon));
    const BssSet set(ifname);
    const wireless_conf* records = set.configured().data();
    if (wireless_check_8021x_enable_for_band(ifname, records, set.count()) != 0)
        run_host(Command<128>("%s", daemon));
    wireless_set_radius_iptables(ifname, records, set.count());
}

}  // namespace

int wireless_set_igmpsnoop(const char* ifname, int enable) {
    if (ifname == nullptr) return 0;
    const int32_t wl_mode = get_wl_mode_by_ifname(ifname);
    const BssSet set(ifname);
    for (int bss = 0; bss < set.count(); ++bss) {
        const IfName name = IfName::bss(wl_mode, bss);
        run_host(Command<128>("/sbin/iwpriv %s set IgmpSnEnable=%d", name.view(), enable));
        run_host(Command<128>("/sbin/iwpriv %s set IgmpAdd=01:00:5e:00:00:fb", name.view()));
        run_host(Command<128>("/sbin/iwpriv %s set IgmpAdd=01:00:5e:7f:ff:fa", name.view()));
    }
    return 0;
}

int wireless_restart_8021xd() {
    for (const int32_t wl_mode : RadioList()) {
        const IfName name = IfName::main(wl_mode);
        print_error("restart_1x_daemon : %s\n", name.c_str());
        const auto* row = find_row(kAuthenticators, &AuthenticatorRow::ifname, name.view());
        if (row != nullptr) wireless_restart_8021xd_if(name.c_str(), row->daemon);
    }
    return 0;
}

int wireless_restart_bandstrg() {
    run_host(Command<64>("killall bndstrg"));
    if (get_band_steering_running(0) != 0) run_host(Command<512>("/bin/bndstrg "));
    return 0;
}

int platform_wireless_set_led(const char* ifname, int on) {
    if (ifname == nullptr) return 0;
    const int gpio = getsi_wifi_led_gpio(0, get_wl_mode_by_ifname(ifname));
    if (gpio != -1) turn_led(gpio, on != 0);
    return 0;
}

int wireless_update_beacon_kdx_ie(const char* ifname) {
    if (ifname == nullptr) return -1;
    vendor_element element = {};
    easymesh_get_kdx_ie(&element);
    return wsc_set_oid(ifname, kOidVendorElement, &element, sizeof element);
}

int wireless_update_beacon_kdx_ie_all() {
    for (const int32_t wl_mode : RadioList()) {
        for (int bss = 0; bss < PLATFORM_BSS_MAX; ++bss) {
            char name[PLATFORM_IFNAME_SIZE];
            if (wireless_api_get_ifname(wl_index_of(wl_mode, bss), name) == 1)
                wireless_update_beacon_kdx_ie(name);
        }
    }
    return 0;
}

int wireless_api_wireless_disable() {
    for (const int32_t wl_mode : RadioList()) {
        for (int bss = 0; bss < PLATFORM_BSS_MAX; ++bss) {
            const IfName name = IfName::bss(wl_mode, bss);
            run_host(Command<128>("/sbin/brctl delif br0 %s", name.view()));
            ifdown(name.c_str());
        }
        ifdown(IfName::client(wl_mode).c_str());
    }
    return 0;
}

int platform_wireless_api_apply_mbssid(int32_t wl_mode) {
    const IfName name = IfName::main(wl_mode);
    wireless_conf conf = {};
    read_wireless_conf(&conf, name.c_str());
    set_wireless_conf(&conf, name.c_str());
    return 0;
}
