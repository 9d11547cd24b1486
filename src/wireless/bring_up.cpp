#include "platform/wireless.h"
#include "src/host/factory_mode.h"
#include "src/host/radios.h"
#include "src/host/runner.h"
#include "src/profile/profile_writer.h"
#include "src/support/message.h"
#include "src/support/text.h"
#include "src/wireless/bridge.h"
#include "src/wireless/channel.h"
#include "src/wlmap/ifname.h"

using namespace platform;

namespace {

constexpr const char* kFrame =
    "*******************************************************************\n";

void report_missing(const char* ifname) {
    print_out("%s", kFrame);
    print_out("*** ERROR Wireless Interface (%s) is not FOUND  *********************\n", ifname);
    print_out("%s", kFrame);
}

}  // namespace

int platform_init_wireless() {
    const RadioList radios;
    create_bridge();
    for (const int32_t wl_mode : radios) {
        const IfName ifname = IfName::main(wl_mode);
        if (get_ifexist(ifname.c_str()) == 0) report_missing(ifname.c_str());
        init_mtk_wlif(wl_mode);
    }
    mtk_tpc_patch();
    init_mt762x_hwnat();
    return 0;
}

int init_mtk_wlif(int32_t wl_mode) {
    const IfName ifname = IfName::main(wl_mode);
    BssSet set(ifname.c_str());
    if (wl_mode == 0 && is_default_config() != 0 && !in_factory_mode())
        set.set_count(set_quolex_helper_bss(set.records(), set.count()));
    mtk_wireless_profile_update(wl_mode, set.records(), set.count());
    if (set.radio().channel == 0) mtk_auto_channel_select(ifname.c_str(), set.radio());
    mtk_wlif_update_bridge(ifname.c_str(), wl_mode, set);
    return 0;
}

int platform_set_wireless(const wireless_conf* conf, const char* ifname) {
    if (ifname == nullptr) return 0;

    // The caller's text may be one of our own buffers.
    const IfName name(ifname);
    const int32_t wl_mode = get_wl_mode_by_ifname(name.c_str());
    BssSet set(name.c_str());
    if (conf != nullptr) set.radio() = *conf;
    if (set.radio().channel == 0) mtk_auto_channel_select(name.c_str(), set.radio());
    mtk_wireless_profile_update(wl_mode, set.records(), set.count());
    mtk_wlif_update_bridge(name.c_str(), wl_mode, set);
    signal_start("8021x");
    return 0;
}

int init_mt762x_hwnat() {
    for (const int32_t wl_mode : RadioList()) {
        const IfName ifname = IfName::main(wl_mode);
        run_host(Command<128>("/sbin/iwpriv %s set hw_nat_register=1", ifname.view()));
    }
    return 0;
}
