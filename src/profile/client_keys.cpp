#include "src/profile/sections.h"
#include "src/profile/security_words.h"

namespace platform {
namespace {

class ClientKeyName : public TextBuffer<32> {
public:
    ClientKeyName(int number, std::string_view suffix) {
        put("ApCliKey").put_decimal(number).put(suffix);
    }
};

void set_wep_keys(ProfileList& profile, const wireless_conf& radio) {
    for (int key = 1; key <= PLATFORM_WEP_KEYS; ++key)
        profile.set(ClientKeyName(key, "Type"), radio.apcli_wep_key_format == 1 ? 0 : 1);
    for (int key = 1; key <= PLATFORM_WEP_KEYS; ++key)
        profile.set_field(ClientKeyName(key, "Str").c_str(), radio.apcli_wep_key[key - 1]);
    profile.set("ApCliDefaultKeyID", radio.apcli_wep_default_key);
}

}  // namespace

void set_client_keys(ProfileList& profile, const wireless_conf& radio) {
    profile.set("ApCliEnable", radio.apcli_enable);
    profile.set_field("ApCliSsid", radio.apcli_ssid);
    profile.set_field("ApCliBssid", radio.apcli_bssid);
    profile.set("ApCliAuthMode", auth_word(radio.apcli_auth_mode).data());

    if (!is_cipher(radio.apcli_encryption)) return;
    profile.set("ApCliEncrypType", cipher_word(radio.apcli_encryption).data());
    if (is_wep(radio.apcli_encryption)) {
        set_wep_keys(profile, radio);
    } else if (has_group_key(radio.apcli_encryption)) {
        profile.set_field("ApCliWPAPSK", radio.apcli_wpa_psk);
        profile.set("ApCliDefaultKeyID", 2);
    }
}

}  // namespace platform
