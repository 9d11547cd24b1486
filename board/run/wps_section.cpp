#include <cstdio>

#include "frame/host.h"
#include "host/radio.h"
#include "live/journal.h"
#include "live/key_file.h"
#include "live/radio_driver.h"
#include "platform/platform.h"
#include "run/radio_section.h"
#include "run/report.h"

namespace board::run {
namespace {

constexpr int kPollsAtMost = 10;

const char* state_word(int wps_state) {
    constexpr const char* kWords[] = {"-", "idle", "started", "running", "configured", "failed"};
    return wps_state >= 0 && wps_state <= 5 ? kWords[wps_state] : "no answer";
}

// A run by push button on one radio. The host keeps its state, here in its own words.
class WpsRun {
public:
    WpsRun(const Platform& platform, Steps& steps, const std::string& ifname)
        : platform_(platform), steps_(steps), ifname_(ifname) {}

    std::vector<std::string> run() {
        show_identity();
        start();
        poll();
        check_outcome();
        stop();
        break_off();
        return faults_;
    }

private:
    std::string call(const char* function, const char* rest = "") const {
        return std::string(function) + "(\"" + ifname_ + '"' + rest + ')';
    }

    void require(bool good, const std::string& fault) { run::require(faults_, good, fault); }

    void keep_status(int status) const {
        istatus_set_value_direct(("wps_status." + ifname_).c_str(), std::to_string(status).c_str());
    }

    void show_identity() {
        const auto make_pin = PLATFORM_CALL(platform_, wireless_gen_pincode);
        const auto get_uuid = PLATFORM_CALL(platform_, wireless_get_wps_uuid);
        uint8_t uuid[64] = {};
        uint32_t length = 0;
        const int pin =
            steps_.step(call("wireless_gen_pincode"), [&] { return make_pin(ifname_.c_str()); });
        const int result = steps_.step(call("wireless_get_wps_uuid"),
                                       [&] { return get_uuid(ifname_.c_str(), uuid, &length); });
        require(pin > 0 && result == 0 && length == 16, ifname_ + " has no PIN or no UUID");
        std::printf("  PIN   %08d\n  UUID  ", pin);
        for (uint32_t i = 0; i < length; ++i) std::printf("%02x", uuid[i]);
        std::printf("\n");
    }

    void start() {
        const auto prepare = PLATFORM_CALL(platform_, wireless_prepare_wps);
        const auto begin = PLATFORM_CALL(platform_, wireless_wps_start);
        const wps_start_request push_button{};
        steps_.step(call("wireless_prepare_wps"), [&] { return prepare(ifname_.c_str()); });
        keep_status(WPS_STATE_RUNNING);
        const int result = steps_.step(call("wireless_wps_start", ", push button"),
                                       [&] { return begin(ifname_.c_str(), &push_button); });
        require(result == 1, "WPS did not start on " + ifname_);
    }

    void poll() {
        const auto get_status = PLATFORM_CALL(platform_, wireless_get_wps_status);
        const auto get_peer = PLATFORM_CALL(platform_, apcp_get_wsc_peerinfo_by_ifname);
        std::vector<std::vector<std::string>> rows = {
            {"Query", "Driver", "State", "Device", "Maker", "Model"}
        };
        outcome_ = WPS_STATE_RUNNING;
        for (int i = 1; i <= kPollsAtMost && outcome_ == WPS_STATE_RUNNING; ++i) {
            uint32_t raw = 0;
            outcome_ = get_status(ifname_.c_str(), &raw);
            peer_ = {};
            get_peer(ifname_.c_str(), &peer_);
            rows.push_back({std::to_string(i), std::to_string(raw), state_word(outcome_),
                            quote(peer_.device_name), quote(peer_.manufacturer),
                            quote(peer_.model_name) + ' ' + quote(peer_.model_number)});
        }
        heading("WPS on " + ifname_);
        table(rows);
    }

    void check_outcome() {
        const auto get_configured = PLATFORM_CALL(platform_, wireless_get_wps_configured_ifname);
        char configured[PLATFORM_IFNAME_SIZE] = {};
        steps_.step("wireless_get_wps_configured_ifname()",
                    [&] { return get_configured(configured); });
        const KeyFile device = KeyFile::load_or_empty("/etc/wps_peer.conf");
        require(outcome_ == WPS_STATE_CONFIGURED && configured == ifname_,
                "WPS on " + ifname_ + " ended as " + state_word(outcome_));
        require(peer_.device_name == device.get("device_name").value_or("") &&
                    peer_.serial_number == device.get("serial_number").value_or(""),
                "WPS on " + ifname_ + " does not know the other device");
        keep_status(outcome_);
    }

    void stop() {
        const auto end = PLATFORM_CALL(platform_, wireless_wps_stop);
        steps_.step(call("wireless_wps_stop"), [&] { return end(ifname_.c_str()); });
        const bool enabled = find_radio(ifname_)->bss[0].wps_enable != 0;
        require(driver_setting(ifname_, "WscConfMode") == (enabled ? "6" : "0"),
                "WPS on " + ifname_ + " was not put back into its normal mode");
    }

    // A second run, by PIN, that its owner ends before the other device is through.
    void break_off() {
        const auto prepare = PLATFORM_CALL(platform_, wireless_prepare_wps);
        const auto begin = PLATFORM_CALL(platform_, wireless_wps_start);
        const auto end = PLATFORM_CALL(platform_, wireless_wps_stop);
        const auto get_status = PLATFORM_CALL(platform_, wireless_get_wps_status);
        const wps_start_request by_pin{1, 12345670};
        const char* const name = ifname_.c_str();
        const auto status = [&] { return get_status(name, nullptr); };
        keep_status(WPS_STATE_RUNNING);
        steps_.step(call("wireless_prepare_wps"), [&] { return prepare(name); });
        steps_.step(call("wireless_wps_start", ", PIN 12345670"),
                    [&] { return begin(name, &by_pin); });
        const int before = steps_.step(call("wireless_get_wps_status"), status);
        steps_.step(call("wireless_wps_stop"), [&] { return end(name); });
        const int after = steps_.step(call("wireless_get_wps_status"), status);
        require(before == WPS_STATE_RUNNING && after == WPS_STATE_FAILED,
                "WPS that was broken off on " + ifname_ + " is " + state_word(after));
        keep_status(WPS_STATE_FAILED);
    }

    const Platform& platform_;
    Steps& steps_;
    const std::string& ifname_;
    int outcome_ = WPS_STATE_IDLE;
    wsc_peer_info peer_{};
    std::vector<std::string> faults_;
};

}  // namespace

Faults run_wps(const Platform& platform, Steps& steps, int wl_mode) {
    return WpsRun(platform, steps, find_radio(wl_mode)->main_ifname).run();
}

}  // namespace board::run
