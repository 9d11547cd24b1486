#include "run/session.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/radio.h"
#include "live/interfaces.h"
#include "live/journal.h"
#include "live/radio_driver.h"
#include "run/check.h"
#include "run/panel_section.h"
#include "run/power_on.h"
#include "run/radio_section.h"
#include "run/report.h"
#include "run/steps.h"
#include "run/switch_section.h"

namespace board::run {
namespace {

constexpr std::pair<const char*, const char*> kBridgeAttributes[] = {
    {"address",            "address"                  },
    {"spanning tree",      "bridge/stp_state"         },
    {"forward delay",      "bridge/forward_delay"     },
    {"multicast snooping", "bridge/multicast_snooping"},
};

class Session {
public:
    Session(const Platform& platform, Capture& capture) : platform_(platform), steps_(capture) {}

    int run() {
        step("set_ftm_cache()", platform_.set_ftm_cache);
        add(start_platform(platform_, steps_.capture()));
        step("platform_init_wireless()", platform_.platform_init_wireless);
        show_board();
        add(faults_of_board(true));
        add(start_switch(platform_, steps_.capture()));
        add(try_panel(platform_, steps_.capture()));
        if (can_change()) change_last_bss();
        add(use_radios(platform_, steps_));
        return conclude();
    }

private:
    void step(const std::string& call, const std::function<int()>& action) {
        steps_.step(call, action);
    }

    static bool can_change() {
        const auto& wl_modes = state().wl_modes;
        return !wl_modes.empty() && find_radio(wl_modes.back())->bss_count > 0;
    }

    // As if its owner renamed and hid the last network of the last radio.
    void change_last_bss() {
        const int wl_mode = state().wl_modes.back();
        Radio& radio = *find_radio(wl_mode);
        const BssPlace bss = place_of(wl_mode, radio.bss_count - 1);
        wireless_conf& record = radio.bss[static_cast<size_t>(bss.number)];
        heading("The owner changes " + bss.ifname);
        std::printf("  SSID    %s -> renamed\n  hidden  %d -> 1\n", record.ssid,
                    record.ssid_broadcast == 0);
        std::snprintf(record.ssid, sizeof record.ssid, "renamed");
        record.ssid_broadcast = 0;

        step("platform_set_wireless(null, \"" + radio.main_ifname + "\")",
             [&] { return platform_.platform_set_wireless(nullptr, radio.main_ifname.c_str()); });
        show_board();
        add(faults_of_board(wl_mode != 0));
        add(faults_of_change(bss));
    }

    static std::string network_of(const std::string& ifname) {
        const Radio* const radio = find_radio(ifname);
        if (radio == nullptr || is_client(*radio, ifname) || !interface_is_up(ifname)) return {};
        const auto profile = driver_profile(radio->main_ifname).value_or(KeyFile{});
        const Announced network = announced(profile, bss_number(*radio, ifname));
        return network.ssid + (network.hidden ? " (hidden)" : "");
    }

    static void show_board() {
        heading("Bridge br0");
        std::string members;
        for (const std::string& member : bridge_members("br0")) members += ' ' + member;
        std::printf("  members            %s\n", members.empty() ? " none" : members.c_str());
        for (const auto& [title, attribute] : kBridgeAttributes)
            std::printf("  %-18s  %s\n", title, interface_attribute("br0", attribute).c_str());

        heading("Interfaces");
        std::vector<std::vector<std::string>> rows = {
            {"Interface", "State", "Bridge", "Network"}
        };
        for (const std::string& name : interface_names())
            rows.push_back(
                {name, interface_attribute(name, "operstate"), bridge_of(name), network_of(name)});
        table(rows);
    }

    void add(const std::vector<std::string>& faults) {
        for (const std::string& fault : faults)
            if (std::find(faults_.begin(), faults_.end(), fault) == faults_.end())
                faults_.push_back(fault);
    }

    int conclude() const {
        heading("Result");
        if (faults_.empty()) {
            std::printf("  The board is up%s.\n",
                        can_change() ? " and the change has arrived" : "");
            return 0;
        }
        for (const std::string& fault : faults_) std::printf("  FAULT: %s\n", fault.c_str());
        return 1;
    }

    const Platform& platform_;
    Steps steps_;
    std::vector<std::string> faults_;
};

}  // namespace

int run_session(const Platform& platform, Capture& capture) {
    return Session(platform, capture).run();
}

}  // namespace board::run
