#include "platform/wireless.h"
#include "src/host/hardware.h"
#include "src/host/runner.h"
#include "src/support/message.h"
#include "src/support/text.h"
#include "src/wlmap/ifname.h"

using namespace platform;

namespace {

void set_tpc(int32_t wl_mode, const hw_tpc& tpc) {
    if (tpc.enable == 0) return;

    const IfName ifname = IfName::main(wl_mode);
    const TextCopy<sizeof tpc.duty + 1> duty(field_text(tpc.duty));
    const TextCopy<sizeof tpc.value + 1> value(field_text(tpc.value));
    print_error(wl_mode == 1 ? "MTK TPC FOR 5G : %s / %s\n" : "MTK TPC FOR 2G : %s / %s\n",
                duty.c_str(), value.c_str());
    run_host(Command<256>("/sbin/iwpriv %s set tpc_duty=%s", ifname.view(), duty.view()));
    run_host(Command<256>("/sbin/iwpriv %s set tpc=%s", ifname.view(), value.view()));
}

}  // namespace

int mtk_tpc_patch() {
    const hw_info hw = hardware();
    set_tpc(1, hw.tpc_5g);
    set_tpc(0, hw.tpc_2g);
    return 0;
}
