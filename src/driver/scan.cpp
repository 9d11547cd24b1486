#include "src/driver/scan.h"

#include <string_view>

#include "src/driver/answer.h"
#include "src/host/host.h"
#include "src/support/pause.h"
#include "src/support/text.h"

namespace platform {
namespace {

constexpr const char* kStatusPath = "/var/run/scan_status";

// "0" or "name:0"; nothing also means that no scan runs.
bool is_scan_end(std::string_view status) {
    if (status.empty() || status == "0") return true;
    const size_t colon = status.find(':');
    if (colon == std::string_view::npos) return false;
    status.remove_prefix(colon + 1);
    return status == "0";
}

// Without an answer of its own no scan can run: the file would tell of another radio's.
bool has_scan_ended(const char* ifname) {
    const Command<128> command("/sbin/iwpriv %s get_scan_status > /var/run/scan_status", ifname);
    if (!run_driver_query(command, kStatusPath)) return true;
    char status[64] = {};
    return get_file_string(kStatusPath, status, sizeof status) == 0 ||
           is_scan_end(field_text(status));
}

}  // namespace

int wireless_wait_scan_status(const char* ifname, int tries) {
    for (int i = 0; i < tries; ++i) {
        if (has_scan_ended(ifname)) return 0;
        pause_seconds(1);
    }
    return 1;
}

}  // namespace platform
