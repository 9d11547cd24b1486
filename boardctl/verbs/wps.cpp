// Wi-Fi Protected Setup.
#include <unistd.h>

#include <fmt/format.h>

#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

constexpr int kUsualSeconds = 120;  // a run's walk time

std::string state_word(int state) {
    constexpr const char* kWords[] = {"-", "idle", "started", "running", "configured", "failed"};
    return state >= 0 && state <= WPS_STATE_FAILED ? kWords[state] : "no answer";
}

// The host keeps the state of a run in its own words.
void keep_status(const Session& session, const std::string& ifname, int status) {
    session.host.istatus_set_value_direct(("wps_status." + ifname).c_str(),
                                          std::to_string(status).c_str());
}

// One query, with which a run on the virtual board goes on.
Json row_of(const Session& session, const std::string& ifname, int& state) {
    uint32_t raw = 0;
    state = session.platform.wireless_get_wps_status(ifname.c_str(), &raw);
    wsc_peer_info peer{};
    session.platform.apcp_get_wsc_peerinfo_by_ifname(ifname.c_str(), &peer);
    return {{"interface", ifname},
            {"state", state_word(state)},
            {"driver", raw},
            {"device", field_text(peer.device_name)},
            {"maker", field_text(peer.manufacturer)},
            {"model", field_text(peer.model_name)},
            {"number", field_text(peer.model_number)},
            {"serial", field_text(peer.serial_number)}};
}

Outcome status(Session& session, const Arguments& arguments) {
    Json rows = Json::array();
    int state = 0;
    for (const Radio& radio : named_radios(session, arguments))
        rows.push_back(row_of(session, radio.main_ifname, state));
    return {{{"wps", rows}}};
}

std::string uuid_of(const Session& session, const std::string& ifname) {
    uint8_t uuid[64] = {};
    uint32_t length = 0;
    if (session.platform.wireless_get_wps_uuid(ifname.c_str(), uuid, &length) != 0)
        throw Failed("the driver of " + ifname + " tells no UUID");
    std::string digits;
    for (uint32_t i = 0; i < length && i < sizeof uuid; ++i)
        digits += fmt::format("{:02x}", uuid[i]);
    return digits;
}

Outcome identity(Session& session, const Arguments& arguments) {
    Json rows = Json::array();
    for (const Radio& radio : named_radios(session, arguments)) {
        const std::string& ifname = radio.main_ifname;
        const int pin = session.platform.wireless_gen_pincode(ifname.c_str());
        if (pin < 0) throw Failed("the driver of " + ifname + " tells no PIN");
        rows.push_back({{"interface", ifname},
                        {"pin", fmt::format("{:08d}", pin)},
                        {"uuid", uuid_of(session, ifname)}});
    }
    return {{{"identities", rows}}};
}

// Four digits, or seven and the one that makes their sum, the odd places three times, end in 0.
bool is_pin(const std::string& text) {
    int sum = 0;
    for (size_t i = 0; i < text.size(); ++i) sum += (text[i] - '0') * (i % 2 == 0 ? 3 : 1);
    const bool has_digits = text.find_first_not_of("0123456789") == std::string::npos;
    return has_digits && (text.size() == 4 || (text.size() == 8 && sum % 10 == 0));
}

wps_start_request request_of(const Arguments& arguments) {
    const std::string pin = arguments.text("--pin", "0000");
    if (!is_pin(pin))
        throw UsageError("--pin is four digits, or eight with the right check digit, not " + pin);
    return {arguments.has("--pin") ? 1 : 0, std::stoi(pin)};
}

void begin(Session& session, const std::string& ifname, const wps_start_request& request) {
    session.perform(session.platform.wireless_prepare_wps, ifname.c_str());
    keep_status(session, ifname, WPS_STATE_RUNNING);
    const Step step =
        session.perform(session.platform.wireless_wps_start, ifname.c_str(), &request);
    if (step.result != 1) throw Failed("WPS did not start on " + ifname);
}

std::string configured_ifname(const Session& session) {
    char ifname[PLATFORM_IFNAME_SIZE] = {};
    session.platform.wireless_get_wps_configured_ifname(ifname);
    return field_text(ifname);
}

Outcome start_run(Session& session, const Arguments& arguments) {
    const std::string ifname = named_radio(session, arguments.text("IFNAME")).main_ifname;
    begin(session, ifname, request_of(arguments));
    Json queries = Json::array();
    if (arguments.has("--no-wait")) return {{{"queries", queries}, {"state", "running"}}};
    int state = WPS_STATE_RUNNING;
    const int seconds = arguments.number("--seconds", kUsualSeconds);
    for (int second = 0; second < seconds && state == WPS_STATE_RUNNING; ++second) {
        session.progress(fmt::format("WPS on {}: {} s", ifname, second));
        if (second > 0) ::sleep(1);
        queries.push_back(row_of(session, ifname, state));
    }
    const std::string configured = configured_ifname(session);
    if (state != WPS_STATE_RUNNING) keep_status(session, ifname, state);
    const bool is_good = state == WPS_STATE_CONFIGURED && configured == ifname;
    return {{{"queries", queries}, {"state", state_word(state)}, {"configured", configured}},
            is_good ? kGood : kFailed};
}

Outcome stop_run(Session& session, const Arguments& arguments) {
    const std::string ifname = named_radio(session, arguments.text("IFNAME")).main_ifname;
    session.perform(session.platform.wireless_wps_stop, ifname.c_str());
    int state = 0;
    const Json row = row_of(session, ifname, state);
    if (state == WPS_STATE_FAILED) keep_status(session, ifname, state);
    return {{{"wps", Json::array({row})}}};
}

}  // namespace

Verbs wps_verbs() {
    return {
        Verb("wps status*", "How the WPS runs of the radios stand.",
             "wps status\nwps status ra0 --json", status, {kRadioOrAll}),
        Verb("wps start", "Starts a run by push button or PIN and follows it to its end.",
             "wps start rai0\nwps start rai0 --pin 12345670 --no-wait", start_run,
             {kRadio,
              {"--pin", Kind::text, "of the other device; by push button when not given"},
              {"--seconds", Kind::number, "how long to follow it; 120 when not given", {1, 3600}},
              {"--no-wait", Kind::flag, "only start it"}}),
        Verb("wps stop", "Stops a run.", "wps stop rai0", stop_run, {kRadio}),
        Verb("wps identity", "PIN and UUID of the radios.", "wps identity --json", identity,
             {kRadioOrAll}),
    };
}

}  // namespace boardctl
