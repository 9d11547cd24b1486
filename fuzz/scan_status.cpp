// The driver's scan status, polled, for an interface of any name.
#include "fuzz/target.h"
#include "platform/wireless.h"

using namespace fuzz_target;

void fuzz(Pieces& input) {
    Exact ifname(input.text());
    outside().write("/var/run/scan_status", input.rest());
    const int running = wireless_api_wait_scan_end(ifname.c_str());
    CLAIM(running == 0 || running == 1);
    CLAIM(outside().commands.size() == (running == 1 ? 15 : outside().commands.empty() ? 0 : 1));
}
