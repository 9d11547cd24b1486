// start and apply: what the host does at power-on and after a change of its configuration.
#include <algorithm>

#include "board/store/journal.h"
#include "boardctl/nearest.h"
#include "boardctl/verbs/profile_changes.h"
#include "boardctl/verbs/radio_names.h"
#include "platform/platform.h"
#include "src/host/host.h"

namespace boardctl {
namespace {

using board::KeyFile;

// A power-on, in order.
constexpr const char* kSteps[] = {"set_ftm_cache",        "init_mt7622", "platform_init_wireless",
                                  "init_ethernet_switch", "reinit_vlan", "init_portconfig",
                                  "init_sniff_port"};

Json counted(const Step& step) {
    return {{"call", step.call},
            {"result", step.result},
            {"effects", step.effects.size()},
            {"messages", step.messages.size()}};
}

Json in_full(const Step& step) {
    return {{"call", step.call},
            {"result", step.result},
            {"messages", step.messages},
            {"effects", step.effects}};
}

bool is_good(const Session& session, const Step& step) {
    if (step.call != "init_ethernet_switch()") return step.result == 0;
    const int iptv = HOST_CALL(session.library, get_iptv_config)();
    return step.result == (iptv == 1 ? 0 : iptv);
}

Outcome start(Session& session, const Arguments& arguments) {
    Outcome outcome;
    Json& steps = outcome.value["steps"] = Json::array();
    for (const char* const name : kSteps) {
        auto* const function = session.library.get<int()>(name);
        const Step step = session.perform(std::string(name) + "()", function);
        steps.push_back(arguments.has("--steps") ? in_full(step) : counted(step));
        if (!is_good(session, step)) outcome.status = kFailed;
    }
    return outcome;
}

template <size_t kSize>
void set_text(char (&field)[kSize], const std::string& text) {
    std::fill_n(field, kSize, '\0');
    std::copy(text.begin(), text.end(), field);
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
    const bool changes = arguments.has("--ssid") || arguments.has("--key") ||
                         arguments.has("--hidden") || arguments.has("--enabled");
    check_ssid(arguments.text("--ssid"), "--ssid");
    if (arguments.has("--ssid")) set_text(record.ssid, arguments.text("--ssid"));
    if (arguments.has("--key")) set_key(record, arguments.text("--key"));
    if (arguments.has("--hidden"))
        record.ssid_broadcast = is_on(arguments.text("--hidden")) ? 0 : 1;
    if (arguments.has("--enabled")) record.enabled = is_on(arguments.text("--enabled")) ? 1 : 0;
    return changes;
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
    if (HOST_CALL(session.library, read_wireless_conf)(&record, ifname.c_str()) != 0)
        throw Failed("the host has no configuration of " + ifname);
    if (!make_change(record, arguments)) return;
    if (HOST_CALL(session.library, set_wireless_conf)(&record, ifname.c_str()) != 0)
        throw Failed("the host does not store the configuration of " + ifname);
}

void check_channel(const Session& session, const std::string& ifname, const Arguments& arguments) {
    constexpr int kLastChannel = 196;
    constexpr int kWidth = 20;
    const auto is_valid = HOST_CALL(session.library, wireless_check_channel_valid);
    std::vector<std::string> channels = {"0"};
    for (int channel = 1; channel <= kLastChannel; ++channel)
        if (is_valid(ifname.c_str(), 0, kWidth, channel) != 0)
            channels.push_back(std::to_string(channel));
    const std::string wanted = std::to_string(arguments.number("--channel", 0));
    if (std::find(channels.begin(), channels.end(), wanted) == channels.end())
        throw UsageError("--channel of " + ifname + " is " + alternatives(channels) + ", not " +
                         wanted);
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
    const Step step = session.perform("platform_set_wireless(null, \"" + main_ifname + "\")", [&] {
        return PLATFORM_CALL(session.library, platform_set_wireless)(nullptr, main_ifname.c_str());
    });
    const auto after = KeyFile::load_or_empty(network.radio.profile_path);
    Json answer = arguments.has("--steps") ? in_full(step) : counted(step);
    answer["profile"] = network.radio.profile_path;
    answer["changes"] = changes_between(before, after);
    return {answer, step.result == 0 ? kGood : kFailed};
}

constexpr Option kStartOptions[] = {
    {"--fresh", Kind::flag, "make the virtual board anew first, as it leaves the factory"},
    {"--erased", Kind::flag, "make it anew without calibration data"},
    {"--steps", Kind::flag, "show the messages and effects of each step"},
};
constexpr Option kApplyOptions[] = {
    {"IFNAME", Kind::required, "a network, such as ra0 or rai1"},
    {"--ssid", Kind::text, "its new name"},
    {"--key", Kind::text, "its new passphrase"},
    {"--hidden", Kind::text, "on or off", {}, kOnOff},
    {"--enabled", Kind::text, "on or off", {}, kOnOff},
    {"--channel", Kind::number, "of its radio; 0 is automatic", {0, 196}},
    {"--repeat",
     Kind::text,
     "the network that its radio repeats; \"\" for none",
     {},
     nullptr,
     true},
    {"--repeat-key", Kind::text, "passphrase there", {}, nullptr, true},
    {"--steps", Kind::flag, "show messages and effects"},
};

}  // namespace

std::span<const Verb> start_verbs() {
    static const Verb kVerbs[] = {
        {"start", "", "Power-on: calibration, modules, radios and the Ethernet switch.",
         "  boardctl start\n  boardctl start --steps      with every command, in order\n"
         "  boardctl start --erased     a new board without calibration data",
         start, kStartOptions},
        {"apply", "", "Applies the configuration of a radio, after changes of a network if any.",
         "  boardctl apply ra0\n  boardctl apply rai1 --ssid garden --hidden on\n"
         "  boardctl apply rai0 --repeat upstairs --repeat-key secret123",
         apply, kApplyOptions},
    };
    return kVerbs;
}

}  // namespace boardctl
