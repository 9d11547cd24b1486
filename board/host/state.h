// What the host firmware knows and would answer. A test sets the fields directly; the effects of
// the host's functions go to the journal (board/store/journal.h) and into the board's tree instead.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/records.h"

namespace board {

using InfoBlock = std::array<char, PLATFORM_SYSINFO_SIZE>;

// The repeater client's link to its upstream access point; an empty SSID means no link.
struct ClientLink {
    std::string ssid;
    std::string ap_mac;
    channel_spec channel{};
    int speed_mbps = 0;
};

struct Radio {
    std::string main_ifname;    // "ra0"
    std::string bss_prefix;     // "ra": BSS 1 is ra1
    std::string client_prefix;  // "apcli": the repeater client is apcli0
    std::string chipset;        // empty: the host does not know
    int led_gpio = -1;

    std::array<wireless_conf, PLATFORM_BSS_MAX> bss{};  // record 0 also holds the radio's settings
    int bss_count = 0;

    std::vector<int> valid_channels;
    channel_spec best_channel{};  // the answer of automatic selection
    ClientLink client;
};

// A regulatory limit; fields left at their defaults match anything. The first match counts.
struct Regulation {
    std::string country;
    int channel = -1;
    int bandwidth_mhz = -1;
    int power_percent = -1;
    std::optional<std::array<regulated_eeprom_entry, REGULATED_EEPROM_ENTRIES>> eeprom;
};

struct MacFilter {
    int policy = 0;  // 0 off, 1 deny the listed, 2 allow only the listed
    std::vector<mac_filter_entry> entries;
};

struct HelperBss {
    std::string ssid;  // at most 63 characters, for the flag that follows it in the block
    bool secured = false;
    std::string key;
    bool hidden = false;
};

struct LedSilence {
    uint32_t mode = 0;  // 0 normal, 1 always silent, otherwise from start_hour to end_hour
    uint32_t start_hour = 0;
    uint32_t end_hour = 0;
};

bool is_silent(const LedSilence& silence);  // now, by the hour in UTC

struct PortSetting {
    std::string mode;    // "on", "off", "auto", ...
    std::string speed;   // "10", "100", "1000"
    std::string duplex;  // "full", "half"
};

struct State {
    std::vector<int32_t> wl_modes;  // without the -1 that ends the host's list
    std::array<Radio, 2> radios;    // by wl mode

    hw_info hw{};
    InfoBlock sw{};
    InfoBlock pi{};
    InfoBlock wifi{};  // opaque, but the regulatory functions must be handed these very bytes
    std::vector<Regulation> regulations;

    std::map<uint32_t, MacFilter> mac_filters;  // by wl_index
    int max_mac_filter = 0;

    std::string my_mac;
    std::string lan_address;
    std::string lan_netmask;
    std::string lan_gateway;
    std::map<std::string, std::string> wan_types;  // "wan1" -> "static"
    int default_config = 0;
    int igmp_proxy = 0;

    int easymesh = 0;
    std::string almac;
    std::string wsc_device_name;
    vendor_element element{};

    int band_steering = 0;
    std::string band_steering_ssid;

    LedSilence led_silence;
    int iptv_config = 0;
    int sniff_port = 0;
    std::vector<int> lan_switch_ports;  // switch port of LAN port 1, 2, ...
    std::vector<int> wan_switch_ports;
    std::map<int, PortSetting> port_settings;  // by user port index

    int scan_polls = 0;                  // how often a scan reports that it still runs
    bool journal_profile_edits = false;  // "profile PATH set|store|remove|write ..."

    // What the library holds at the moment and must give back.
    int open_profiles = 0;
    int open_mac_tables = 0;
    int open_lists = 0;
};

State& state();
State factory_state();  // what state() starts with

// A Mac filter entry in force, from "00:11:22:33:44:55".
mac_filter_entry filter_entry(const std::string& mac);

void set_model_name(State& target, const std::string& name);
void set_helper_bss(State& target, int entry, const HelperBss& helper);  // entry 0 or 1
void remove_second_helper_bss(State& target);

// Every interface that the state names, and eth0, for a test without the board's tree.
void create_interfaces(const State& source);

}  // namespace board
