#include "platform/switch.h"
#include "src/host/runner.h"
#include "src/switch/ports.h"

using namespace platform;

namespace {

constexpr const char* kMirrorKey = "port_mirror";

}  // namespace

int set_sniff_port(int user_port) {
    const hw_info hw = hardware();
    const int monitor = get_dev_port(&hw, user_port);
    if (user_port == 0) {
        run_host(Command<64>("switch mirror enable 0 %d", monitor));
        iconfig_set_intvalue_direct(kMirrorKey, 0);
        return 0;
    }
    iconfig_set_intvalue_direct(kMirrorKey, user_port);
    run_host(Command<64>("switch mirror enable 1 %d", monitor));
    for (int i = 1; i <= lan_ports(hw); ++i)
        if (i != user_port)
            run_host(Command<64>("switch mirror target %d 3", get_dev_port(&hw, i)));
    return 0;
}

int init_sniff_port() {
    if (get_sniff_port() != 0) set_sniff_port(1);
    return 0;
}
