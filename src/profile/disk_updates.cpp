#include "platform/profile.h"
#include "platform/wlmap.h"
#include "src/host/host_buffer.h"
#include "src/host/radios.h"
#include "src/profile/profile_list.h"
#include "src/support/text.h"

using namespace platform;

namespace {

constexpr std::string_view kBrand = "Quolex";
constexpr int kElementCopies = 4;  // one for each BSS

ProfileOnDisk profile_of(int32_t wl_mode) {
    return ProfileOnDisk(get_racfg_filename(wl_mode));
}

void set_in_every_profile(const RadioList& radios, const char* key, const char* value) {
    for (const int32_t wl_mode : radios) profile_of(wl_mode).set(key, value);
}

// The element in hexadecimal; its text only up to the terminator.
void put_element(Text& out, const vendor_element& element) {
    for (const uint8_t byte : element.first) out.put_hex(byte, 2);
    for (const uint8_t byte : element.second) out.put_hex(byte, 2);
    for (const uint8_t byte : element.third) out.put_hex(byte, 2);
    for (const char c : field_text(element.text)) out.put_hex(static_cast<uint8_t>(c), 2);
}

void kdx_ie_profile_update() {
    const RadioList radios;
    vendor_element element = {};
    easymesh_get_kdx_ie(&element);
    TextBuffer<1024> value;
    for (int copy = 0; copy < kElementCopies; ++copy) {
        value.put(copy == 0 ? "" : ";");
        put_element(value, element);
    }
    set_in_every_profile(radios, "KDX_IE_AP", value.c_str());
}

// Without the brand word and the character after it.
const char* designation(const char* model) {
    const std::string_view name(model);
    if (!has_prefix(name, kBrand)) return model;
    return name.size() > kBrand.size() ? model + kBrand.size() + 1 : "";
}

}  // namespace

void wsc_profile_update() {
    const TextCopy<128> mac(get_my_mac());
    HostBuffer<char[PLATFORM_SYSINFO_SIZE]> product;
    get_si("pi", product.block);
    product.block[sizeof product.block - 1] = '\0';
    for (const int32_t wl_mode : RadioList()) {
        const ProfileOnDisk profile = profile_of(wl_mode);
        profile.set("WscManufacturer", kBrand.data());
        profile.set("WscModelName", designation(product.block));
        char device[128] = {};
        easymesh_make_wsc_kdx_type_str(device, sizeof device);
        device[sizeof device - 1] = '\0';
        profile.set("WscDeviceName", device);
        profile.set("WscModelNumber", mac.c_str());
        profile.set("WscSerialNumber", "0");
    }
}

void mtk_profile_update_for_easymesh() {
    kdx_ie_profile_update();
    wsc_profile_update();
    if (easymesh_enabled() == 0) return;

    const RadioList radios;
    set_in_every_profile(radios, "IgmpSnEnable", "1;1;1;1");

    const ProfileOnDisk first = profile_of(0);
    first.set("AutoChannelSelect", "3");
    first.set("CountryRegion", 0);
    first.set("AutoChannelSkipList", "12;13");

    const ProfileOnDisk second = profile_of(1);
    second.set("AutoChannelSelect", "3");
    second.set("CountryRegionABand", "13");
    second.set("AutoChannelSkipList",
               "36;40;44;48;52;56;60;64;100;104;108;112;116;120;124;128;132;136;140;144;165;");

    set_in_every_profile(radios, "HideSSID", "1;1;1;1");
}
