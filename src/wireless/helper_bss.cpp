#include <string.h>

#include "platform/wireless.h"
#include "src/host/host.h"
#include "src/host/host_buffer.h"
#include "src/support/text.h"

using namespace platform;

namespace {

// One helper-BSS entry of the "sw" block, read by offset: its fields overlap.
class HelperEntry {
public:
    explicit HelperEntry(const char* entry) : entry_(entry) {}
    bool present() const { return number(SW_INFO_HELPER_PRESENT) != 0; }
    bool secured() const { return number(SW_INFO_HELPER_SECURED) != 0; }
    bool hidden() const { return number(SW_INFO_HELPER_HIDDEN) != 0; }
    std::string_view ssid() const { return text(SW_INFO_HELPER_SSID, 128); }
    std::string_view key() const { return text(SW_INFO_HELPER_KEY, 108); }

private:
    int32_t number(size_t offset) const {
        int32_t value;
        memcpy(&value, entry_ + offset, sizeof value);
        return value;
    }
    std::string_view text(size_t offset, size_t width) const {
        return {entry_ + offset, strnlen(entry_ + offset, width)};
    }

    const char* entry_;
};

// Puts the helper BSS behind the records in use; false when there is no room for it.
bool append_helper(wireless_conf* records, int index, const HelperEntry& helper) {
    if (index < 0 || index >= PLATFORM_BSS_MAX) return false;

    wireless_conf& bss = records[index];
    bss = records[0];
    bss.enabled = 1;
    copy_text(bss.ssid, helper.ssid());
    bss.no_forwarding = 0;
    bss.ssid_broadcast = !helper.hidden();
    bss.auth_mode = helper.secured() ? WIRELESS_AUTH_WPAPSK : WIRELESS_AUTH_OPEN;
    bss.encryption = helper.secured() ? WIRELESS_CIPHER_AES : WIRELESS_CIPHER_NONE;
    if (helper.secured()) copy_text(bss.wpa_psk, helper.key());
    bss.bss_index = index;
    return true;
}

}  // namespace

int set_quolex_helper_bss(wireless_conf* records, int count) {
    if (records == nullptr) return count;

    HostBuffer<char[PLATFORM_SYSINFO_SIZE]> software;
    get_si("sw", software.block);
    const HelperEntry second(software.block + SW_INFO_HELPER_STRIDE);
    if (append_helper(records, count, HelperEntry(software.block))) ++count;
    if (second.present() && append_helper(records, count, second)) ++count;
    return count;
}
