#include "platform/wlmap.h"

#include "platform/records.h"
#include "src/host/radios.h"
#include "src/support/number.h"
#include "src/support/text.h"
#include "src/wlmap/l1profile.h"

namespace platform {
namespace {

constexpr int32_t kBandSteering = 999;
constexpr std::string_view kBandName = "band";

constinit char main_ifname[kL1ValueSize];
constinit char client_ifname[kL1ValueSize];
constinit char profile_path[kL1ValueSize];
constinit char ifname_prefix[kL1ValueSize];
constinit char bss_ifname[PLATFORM_IFNAME_SIZE];

// "INDEX<radio>_<name>" of the radio's entry in the index file, empty when it is missing.
const char* look_up(int32_t wl_mode, std::string_view name, std::span<char> result) {
    memset(result.data(), 0, result.size());
    TextBuffer<kL1ValueSize> key;
    key.put(wl_mode == 1 ? "INDEX1_" : "INDEX0_").put(name);
    l1profile_get(key.view(), result);
    return result.data();
}

const char* get_wl_main_ifname(int32_t wl_mode) {
    return look_up(wl_mode, "main_ifname", main_ifname);
}

const char* get_wl_ext_ifname(int32_t wl_mode) {
    return look_up(wl_mode, "ext_ifname", ifname_prefix);
}

bool form_bss_ifname(uint32_t wl_index, Text& name) {
    name.put(get_wl_ext_ifname(static_cast<int32_t>(wl_index >> 16)));
    name.put_decimal(wl_index & 0xFFFF);
    return name.ok();
}

size_t first_digit(std::string_view text) {
    size_t at = 0;
    while (at < text.size() && !is_digit(text[at])) ++at;
    return at;
}

}  // namespace
}  // namespace platform

using namespace platform;

const char* get_wl_ifname_by_wlmode(int32_t wl_mode) {
    return wl_mode == kBandSteering ? kBandName.data() : get_wl_main_ifname(wl_mode);
}

const char* get_wl_bridge_ifname_by_wlmode(int32_t wl_mode) {
    look_up(wl_mode, "apcli_ifname", client_ifname);
    const size_t length = std::min(field_text(client_ifname).size(), kL1ValueSize - 2);
    copy_text(std::span(client_ifname).subspan(length), "0");
    return client_ifname;
}

const char* get_racfg_filename(int32_t wl_mode) {
    return look_up(wl_mode, "profile_path", profile_path);
}

int32_t get_wl_idx_by_ifname(const char* ifname) {
    if (ifname == nullptr) return -1;

    const RadioList radios;
    const TextCopy<PLATFORM_IFNAME_SIZE> copy(ifname);
    const std::string_view name = copy.view();
    const size_t digit = first_digit(name);
    if (digit == name.size()) return 0;

    const std::string_view prefix(name.data(), digit);
    const int32_t bss = leading_decimal({name.data() + digit, name.size() - digit});
    for (const int32_t wl_mode : radios)
        if (prefix == get_wl_ext_ifname(wl_mode))
            return static_cast<int32_t>(wl_index_of(wl_mode, bss));
    return -1;
}

int32_t get_wl_mode_by_ifname2(const char* ifname) {
    if (ifname == nullptr) return 0;
    if (ifname == kBandName) return kBandSteering;
    return static_cast<int32_t>(static_cast<uint32_t>(get_wl_idx_by_ifname(ifname)) >> 16);
}

int wireless_api_get_ifname(uint32_t wl_index, char* ifname) {
    TextBuffer<PLATFORM_IFNAME_SIZE> name;
    if (ifname == nullptr || !form_bss_ifname(wl_index, name)) return 0;
    copy_text({ifname, PLATFORM_IFNAME_SIZE}, name.view());
    return 1;
}

const char* get_wl_ifname(uint32_t wl_index) {
    memset(bss_ifname, 0, sizeof bss_ifname);
    TextBuffer<PLATFORM_IFNAME_SIZE> name;
    copy_text(bss_ifname, form_bss_ifname(wl_index, name) ? name.view() : std::string_view());
    return bss_ifname;
}
