// start and apply: what the host does at power-on and after a change of its configuration.
#include <algorithm>

#include "boardctl/verbs/profile_changes.h"
#include "boardctl/verbs/radio_names.h"
#include "frame/host.h"
#include "live/journal.h"
#include "platform/platform.h"

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

void set_text(char* field, size_t size, const std::string& text, const char* name) {
    if (text.size() >= size) throw UsageError(std::string(name) + " is too long");
    std::fill_n(field, size, '\0');
    std::copy(text.begin(), text.end(), field);
}

// The options of "apply" that change a network's record; false when none is given.
bool change(wireless_conf& record, const Arguments& arguments) {
    const bool changes = arguments.has("--ssid") || arguments.has("--key") ||
                         arguments.has("--hidden") || arguments.has("--enabled") ||
                         arguments.has("--channel");
    if (arguments.has("--ssid")) set_text(record.ssid, 33, arguments.text("--ssid"), "--ssid");
    if (arguments.has("--key"))
        set_text(record.wpa_psk, sizeof record.wpa_psk, arguments.text("--key"), "--key");
    if (arguments.has("--hidden"))
        record.ssid_broadcast = is_on(arguments.text("--hidden"), "--hidden") ? 0 : 1;
    if (arguments.has("--enabled"))
        record.enabled = is_on(arguments.text("--enabled"), "--enabled") ? 1 : 0;
    record.channel = arguments.number("--channel", record.channel);
    return changes;
}

// Record 0 also holds the radio's settings, of which the repeater's link is one part.
bool repeat(wireless_conf& record, const Arguments& arguments) {
    if (!arguments.has("--repeat")) return false;
    const std::string key = arguments.text("--repeat-key");
    set_text(record.apcli_ssid, 33, arguments.text("--repeat"), "--repeat");
    set_text(record.apcli_wpa_psk, sizeof record.apcli_wpa_psk, key, "--repeat-key");
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

Outcome apply(Session& session, const Arguments& arguments) {
    const std::string ifname = arguments.text("IFNAME");
    const Network network = named_network(session, ifname);
    const std::string& main_ifname = network.radio.main_ifname;
    store(session, ifname, arguments, change);
    store(session, main_ifname, arguments, repeat);

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
    {"--hidden", Kind::text, "on or off"},
    {"--enabled", Kind::text, "on or off"},
    {"--channel", Kind::number, "of its radio; 0 is automatic"},
    {"--repeat", Kind::text, "the network that its radio repeats; \"\" for none"},
    {"--repeat-key", Kind::text, "passphrase there"},
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
