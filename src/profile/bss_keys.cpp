#include "src/host/host_buffer.h"
#include "src/profile/list_value.h"
#include "src/profile/sections.h"
#include "src/profile/security_words.h"

namespace platform {
namespace {

constexpr const char* kWepKeyNames[PLATFORM_WEP_KEYS] = {"Key1Str", "Key2Str", "Key3Str",
                                                         "Key4Str"};
constexpr const char* kWepKeyTypes[PLATFORM_WEP_KEYS] = {"Key1Type", "Key2Type", "Key3Type",
                                                         "Key4Type"};

std::string_view isolation_entry(int32_t no_forwarding) {
    switch (no_forwarding) {
        case 0:
        case 2:
            return "0";
        case 1:
            return "1";
        default:
            return "";
    }
}

// Name, visibility and forwarding.
void set_identity_keys(ProfileList& profile, const RadioConf& conf) {
    PlainList<> isolation(conf.count());
    for (const wireless_conf& bss : conf.bss) isolation.add(isolation_entry(bss.no_forwarding));
    profile.set("NoForwarding", isolation);

    int number = 1;
    for (const wireless_conf& bss : conf.bss)
        profile.set_field(NumberedKey("SSID", number++).c_str(), bss.ssid);

    PlainList<> hidden(conf.count());
    for (const wireless_conf& bss : conf.bss) hidden.add(bss.ssid_broadcast == 0 ? "1" : "0");
    profile.set("HideSSID", hidden);

    TextBuffer<1024> snooping;
    for (int i = 0; i < conf.count(); ++i)
        snooping.put(get_igmp_proxy() != 0 || conf.radio.igmp_snoop != 0 ? "1;" : "0;");
    profile.set("IgmpSnEnable", snooping);
}

void set_station_keys(ProfileList& profile, const RadioConf& conf) {
    profile.set("WmmCapable", repeat_int_list(conf.radio.wmm_capable != 0, conf.count()));
    profile.set("APSDCapable", repeat_int_list(conf.radio.apsd_capable != 0, conf.count()));
    profile.set("StationKeepAlive", repeat_int_list(180, conf.count()));
}

void set_authentication_keys(ProfileList& profile, const RadioConf& conf) {
    PlainList<> auth(conf.count());
    for (const wireless_conf& bss : conf.bss) auth.add(auth_word(bss.auth_mode));
    profile.set("AuthMode", auth);
}

void set_radius_keys(ProfileList& profile, const RadioConf& conf) {
    constexpr size_t kServerLength = 30;  // with its ";" and terminator an entry takes 32 bytes
    TextBuffer<1024> servers;
    for (const wireless_conf& bss : conf.bss) {
        const TextCopy<kServerLength + 1> server(first_line(field_text(bss.radius_server)));
        servers.put(server.view().empty() ? "0.0.0.0" : server.view()).put(';');
    }
    profile.set("RADIUS_Server", servers);

    TextBuffer<1024> ports;
    for (const wireless_conf& bss : conf.bss)
        ports.put_decimal(bss.radius_port == 0 ? 1812 : bss.radius_port).put(';');
    profile.set("RADIUS_Port", ports);

    profile.set("RADIUS_Key", "");
    int number = 1;
    for (const wireless_conf& bss : conf.bss)
        profile.set_field(NumberedKey("RADIUS_Key", number++).c_str(), bss.radius_key);

    HostBuffer<char[64]> address;
    get_lan_ipconfig(address.block, nullptr, nullptr);
    profile.set_field("own_ip_addr", address.block);
}

// A BSS's own keys; the lists that would hold them for all BSSs stay empty so that these apply.
void set_own_keys(ProfileList& profile, const wireless_conf& bss, int number) {
    profile.set_field(NumberedKey("WPAPSK", number).c_str(), bss.wpa_psk);
    if (!is_wep(bss.encryption)) return;
    for (int key = 0; key < PLATFORM_WEP_KEYS; ++key)
        profile.set_field(NumberedKey(kWepKeyNames[key], number).c_str(), bss.wep_key[key]);
}

void set_cipher_keys(ProfileList& profile, const RadioConf& conf) {
    PlainList<> ciphers(conf.count());
    PlainList<> empty(conf.count());
    PlainList<32> default_keys(conf.count());
    PlainList<64> key_types(conf.count());
    int number = 1;
    for (const wireless_conf& bss : conf.bss) {
        set_own_keys(profile, bss, number++);
        ciphers.add(cipher_word(bss.encryption));
        empty.add("");
        default_keys.add(has_group_key(bss.encryption) ? 2 : bss.wep_default_key);
        key_types.add(bss.wep_key_format == 1 ? "0" : "1");
    }
    profile.set("EncrypType", ciphers);
    profile.set("WPAPSK", empty);
    profile.set("DefaultKeyID", default_keys);
    for (const char* key : kWepKeyTypes) profile.set(key, key_types);
    for (const char* key : kWepKeyNames) profile.set(key, empty);
}

void set_threshold_keys(ProfileList& profile, const RadioConf& conf) {
    profile.set("RTSThreshold", repeat_int_list(conf.radio.rts_threshold, conf.count()));
    profile.set("FragThreshold", repeat_int_list(conf.radio.frag_threshold, conf.count()));
    profile.set("TxPreamble", repeat_int_list(conf.radio.tx_preamble, conf.count()));
}

void set_wps_keys(ProfileList& profile, const wireless_conf& radio) {
    const bool offered = wireless_check_8021x_enabled(&radio) == 0 && radio.wps_enable != 0;
    const bool configured = radio.wps_configured != 0 || radio.wps_configured2 != 0;
    profile.set("WscConfMode", offered ? "7;0;0;0" : "0;0;0;0");
    profile.set("WscConfStatus", configured ? "2;2;2;2" : "1;1;1;1");
    profile.set("WscV2Support", "0;0;0;0");
}

}  // namespace

void set_bss_keys(ProfileList& profile, const RadioConf& conf) {
    set_identity_keys(profile, conf);
    set_station_keys(profile, conf);
    set_authentication_keys(profile, conf);
    set_radius_keys(profile, conf);
    set_cipher_keys(profile, conf);
    set_threshold_keys(profile, conf);
    set_wps_keys(profile, conf.radio);
}

}  // namespace platform
