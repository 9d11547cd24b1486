#include "src/profile/acl.h"

#include "src/host/radios.h"
#include "src/profile/list_value.h"
#include "src/profile/sections.h"
#include "src/support/heap.h"
#include "src/support/mac.h"
#include "src/support/unique.h"

namespace platform {
namespace {

constexpr size_t kFullAcl = 4080;

using FilterTable = Unique<mac_filter_table*, nullptr, macdb_free>;

// The entries follow the table's head.
std::span<const mac_filter_entry> entries_of(const FilterTable& table) {
    if (!table.ok() || table.get()->count <= 0) return {};
    return {reinterpret_cast<const mac_filter_entry*>(table.get() + 1),
            static_cast<size_t>(table.get()->count)};
}

void report_no_memory() {
    syslog_msg(1, "mtk_macauth_profile_update: malloc failed\n");
}

// False without memory for it.
bool set_access_list(ProfileList& profile, int32_t wl_mode, int bss) {
    const Heap<char> list(kAclSize);
    if (!list.ok()) {
        report_no_memory();
        return false;
    }
    macauth_acl_string(wl_mode, bss, list.get());
    profile.set(NumberedKey("AccessControlList", bss), list.get());
    return true;
}

}  // namespace

int list_filter_addresses(std::span<const mac_filter_entry> entries, Text& list) {
    int count = 0;
    for (const mac_filter_entry& entry : entries) {
        if (entry.inactive != 0) continue;
        put_mac(entry.mac, ';', list);
        ++count;
        if (list.size() > kFullAcl) break;
    }
    return count;
}

int macauth_acl_string(int32_t wl_mode, int32_t bss, char* buffer) {
    if (buffer == nullptr) {
        report_no_memory();
        return 0;
    }
    const int max = hwinfo_get_max_macauth();
    const FilterTable table(macdb_read(wl_index_of(wl_mode, bss), max));
    Text list({buffer, kAclSize});
    const int count = list_filter_addresses(entries_of(table), list);
    if (list.size() > kFullAcl)
        syslog_msg(1, "Error:MAC Buf Overflow : %d", static_cast<int>(list.size()));
    return count;
}

int access_policy(int host_policy) {
    switch (host_policy) {
        case 1:
            return 2;  // deny the listed addresses
        case 2:
            return 1;  // allow only the listed addresses
        default:
            return 0;
    }
}

void set_access_keys(ProfileList& profile, const RadioConf& conf) {
    for (int bss = 0; bss < conf.count(); ++bss)
        if (set_access_list(profile, conf.wl_mode, bss))
            profile.set(NumberedKey("AccessPolicy", bss),
                        access_policy(macauth_get_policy(wl_index_of(conf.wl_mode, bss))));
}

}  // namespace platform
