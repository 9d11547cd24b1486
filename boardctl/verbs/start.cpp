// start and apply: what the host does at power-on and after a change of its configuration.
#include <algorithm>

#include "boardctl/facts/profile.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

using board::KeyFile;

// A power-on, in order.
constexpr Function<int()> Platform::*kSteps[] = {
    &Platform::set_ftm_cache,        &Platform::init_mt7622, &Platform::platform_init_wireless,
    &Platform::init_ethernet_switch, &Platform::reinit_vlan, &Platform::init_portconfig,
    &Platform::init_sniff_port};

Json row_of(const Step& step, const Arguments& arguments) {
    Json row = {{"call", step.call}, {"result", step.result}};
    if (arguments.has("--steps")) {
        row["messages"] = step.messages;
        row["effects"] = step.effects;
    } else {
        row["effects"] = step.effects.size();
        row["messages"] = step.messages.size();
    }
    return row;
}

bool is_good(const Session& session, const Step& step) {
    if (step.call != "init_ethernet_switch()") return step.result == 0;
    const int iptv = session.host.get_iptv_config();
    return step.result == (iptv == 1 ? 0 : iptv);
}

Outcome start(Session& session, const Arguments& arguments) {
    Outcome outcome;
    Json& steps = outcome.value["steps"] = Json::array();
    for (const auto function : kSteps) {
        const Step step = session.perform(session.platform.*function);
        steps.push_back(row_of(step, arguments));
        if (!is_good(session, step)) outcome.status = kFailed;
    }
    return outcome;
}

void check_ssid(const std::string& ssid, const char* name) {
    constexpr size_t kLongest = 32;
    if (ssid.size() > kLongest)
        throw UsageError(std::string(name) + " is at most 32 bytes, not " +
                         std::to_string(ssid.size()));
}

bool is_hexadecimal(const std::string& text) {
    return text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

void check_passphrase(const std::string& key, const char* name) {
    if ((key.size() < 8 || key.size() > 63) && !(key.size() == 64 && is_hexadecimal(key)))
        throw UsageError(std::string(name) + " is 8 to 63 bytes or 64 hexadecimal digits");
}

bool is_wep(const wireless_conf& record) {
    return record.encryption == WIRELESS_CIPHER_WEP || record.encryption == WIRELESS_CIPHER_WEP2;
}

void set_wep_key(wireless_conf& record, const std::string& key) {
    const bool is_digits = (key.size() == 10 || key.size() == 26) && is_hexadecimal(key);
    if (!is_digits && key.size() != 5 && key.size() != 13)
        throw UsageError("--key is 5 or 13 bytes or 10 or 26 hexadecimal digits, for WEP");
    const int number = std::clamp(record.wep_default_key, 1, int{PLATFORM_WEP_KEYS});
    record.wep_key_format = is_digits ? 1 : 0;
    set_text(record.wep_key[number - 1], key);
}

void set_key(wireless_conf& record, const std::string& key) {
    if (is_wep(record)) {
        set_wep_key(record, key);
        return;
    }
    check_passphrase(key, "--key");
    set_text(record.wpa_psk, key);
}

// The options of "apply" that change a network's record; false when none is given.
bool change(wireless_conf& record, const Arguments& arguments) {
    check_ssid(arguments.text("--ssid"), "--ssid");
    if (arguments.has("--ssid")) set_text(record.ssid, arguments.text("--ssid"));
    if (arguments.has("--key")) set_key(record, arguments.text("--key"));
    if (arguments.has("--hidden"))
        record.ssid_broadcast = is_on(arguments.text("--hidden")) ? 0 : 1;
    if (arguments.has("--enabled")) record.enabled = is_on(arguments.text("--enabled")) ? 1 : 0;
    return arguments.has_any({"--ssid", "--key", "--hidden", "--enabled"});
}

// Record 0 also holds the radio's settings: its channel and the repeater's link.
bool change_radio(wireless_conf& record, const Arguments& arguments) {
    record.channel = arguments.number("--channel", record.channel);
    if (!arguments.has("--repeat")) return arguments.has("--channel");
    const std::string key = arguments.text("--repeat-key");
    check_ssid(arguments.text("--repeat"), "--repeat");
    if (!key.empty()) check_passphrase(key, "--repeat-key");
    set_text(record.apcli_ssid, arguments.text("--repeat"));
    set_text(record.apcli_wpa_psk, key);
    record.apcli_enable = record.apcli_ssid[0] == '\0' ? 0 : 1;
    record.apcli_auth_mode = key.empty() ? WIRELESS_AUTH_OPEN : WIRELESS_AUTH_WPA2PSK;
    record.apcli_encryption = key.empty() ? WIRELESS_CIPHER_NONE : WIRELESS_CIPHER_AES;
    return true;
}

using Change = bool (*)(wireless_conf& record, const Arguments& arguments);

void store(const Session& session, const std::string& ifname, const Arguments& arguments,
           Change make_change) {
    wireless_conf record{};
    if (session.host.read_wireless_conf(&record, ifname.c_str()) != 0)
        throw Failed("the host has no configuration of " + ifname);
    if (!make_change(record, arguments)) return;
    if (session.host.set_wireless_conf(&record, ifname.c_str()) != 0)
        throw Failed("the host does not store the configuration of " + ifname);
}

void check_channel(const Session& session, const std::string& ifname, const Arguments& arguments) {
    constexpr int kLastChannel = 196;
    constexpr int kWidth = 20;
    const auto& is_valid = session.host.wireless_check_channel_valid;
    std::vector<std::string> channels = {"0"};
    for (int channel = 1; channel <= kLastChannel; ++channel)
        if (is_valid(ifname.c_str(), 0, kWidth, channel) != 0)
            channels.push_back(std::to_string(channel));
    require_one_of(channels, std::to_string(arguments.number("--channel", 0)),
                   "--channel of " + ifname);
}

Outcome apply(Session& session, const Arguments& arguments) {
    const std::string ifname = arguments.text("IFNAME");
    const Network network = named_network(session, ifname);
    const std::string& main_ifname = network.radio.main_ifname;
    if (arguments.has("--channel")) check_channel(session, main_ifname, arguments);
    if (arguments.has("--repeat-key") && !arguments.has("--repeat"))
        throw UsageError("--repeat-key goes with --repeat");
    store(session, ifname, arguments, change);
    store(session, main_ifname, arguments, change_radio);

    const auto before = KeyFile::load_or_empty(network.radio.profile_path);
    const Step step =
        session.perform("platform_set_wireless(null, \"" + main_ifname + "\")",
                        session.platform.platform_set_wireless, nullptr, main_ifname.c_str());
    const auto after = KeyFile::load_or_empty(network.radio.profile_path);
    Json answer = row_of(step, arguments);
    answer["profile"] = network.radio.profile_path;
    answer["changes"] = changes_between(before, after);
    return {answer, step.result == 0 ? kGood : kFailed};
}

}  // namespace

Verbs start_verbs() {
    return {
        Verb(
            "start", "Power-on: calibration, modules, radios and the Ethernet switch.",
            "start\nstart --steps      with every command, in order\n"
            "start --erased     a new board without calibration data",
            start,
            {{"--fresh", Kind::flag, "make the virtual board anew first, as it leaves the factory"},
             {"--erased", Kind::flag, "make it anew without calibration data"},
             {"--steps", Kind::flag, "show the messages and effects of each step"}}),
        Verb("apply", "Applies the configuration of a radio, after changes of a network if any.",
             "apply ra0\napply rai1 --ssid garden --hidden on\n"
             "apply rai0 --repeat upstairs --repeat-key secret123",
             apply,
             {{"IFNAME", Kind::required, "a network, such as ra0 or rai1"},
              {"--ssid", Kind::text, "its new name"},
              {"--key", Kind::text, "its new passphrase"},
              {"--hidden", Kind::text, "on or off", kOnOff},
              {"--enabled", Kind::text, "on or off", kOnOff},
              {"--channel", Kind::number, "of its radio; 0 is automatic", {0, 196}},
              {"--repeat", Kind::text, "the network that its radio repeats; \"\" for none",
               kOrEmpty},
              {"--repeat-key", Kind::text, "passphrase there", kOrEmpty},
              {"--steps", Kind::flag, "show messages and effects"}}),
    };
}

}  // namespace boardctl
