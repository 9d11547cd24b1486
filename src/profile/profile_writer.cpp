#include "src/profile/profile_writer.h"

#include "platform/profile.h"
#include "platform/wlmap.h"
#include "src/profile/list_value.h"
#include "src/profile/sections.h"
#include "src/support/message.h"

namespace platform {
namespace {

void rewrite(const char* path, const RadioConf& conf) {
    ProfileList profile(path);
    set_radio_keys(profile, conf.radio);
    set_power_keys(profile, conf.radio);
    set_bss_keys(profile, conf);
    set_client_keys(profile, conf.radio);
    if (conf.radio.stream_count != 0) {
        profile.set("HT_TxStream", repeat_int_list(conf.radio.stream_count, conf.count()));
        profile.set("HT_RxStream", repeat_int_list(conf.radio.stream_count, conf.count()));
    }
    if (easymesh_enabled() == 0) set_access_keys(profile, conf);
    profile.set("WHNAT", 1);
    profile.write();
}

}  // namespace

int mtk_wireless_profile_update(int32_t wl_mode, const wireless_conf* records, int n) {
    const TextCopy<PLATFORM_PATH_SIZE> path(get_racfg_filename(wl_mode));
    print_error("WL_MODE: %d Profile Name : %s\n", wl_mode, path.c_str());
    // Absent from the file unless the regulatory table puts it back.
    genconfig_remove_item(path.c_str(), "EEPROM_OVERRIDE");
    rewrite(path.c_str(), {
                              wl_mode, records[0], {records, static_cast<size_t>(n)}
    });
    mtk_profile_update_for_easymesh();
    return 0;
}

}  // namespace platform
