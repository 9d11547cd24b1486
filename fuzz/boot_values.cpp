// What uboot_env answers, and the settings that a user hands to it.
#include "fuzz/target.h"
#include "platform/flash.h"
#include "platform/wps.h"

using namespace fuzz_target;

namespace {

template <size_t kSize>
void read_value(const char* name) {
    Output<char[kSize]> value;
    get_bootconfig(name, *value.get(), kSize);
    CLAIM(is_terminated(*value.get()));
}

}  // namespace

void fuzz(Pieces& input) {
    Exact settings(input.text());
    Exact mac_text(input.text());
    outside().text = input.rest();

    read_value<1>(settings.c_str());
    restore_backup_config(settings.c_str());
    CLAIM(*settings.c_str() != '-' || outside().commands.empty());
    read_value<32>("ftm");
    read_value<300>("ethaddr");
    check_diag_flag();
    check_ated_flag();
    set_ftm_cache();
    Output<char[18]> text;
    get_hwaddr_flash("ra0", *text.get());
    CLAIM(is_terminated(*text.get()) && std::strlen(*text.get()) == 17);

    set_bootconfig("set", settings.c_str());
    set_bootconfig(settings.c_str(), nullptr);
    set_hwaddr_flash(mac_text.c_str());
}
