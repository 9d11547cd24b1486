#include "border/row.h"
#include "src/host/host.h"

namespace border {
namespace {

constexpr Parameter object(const char* name) {
    return {name, Kind::object};
}

constexpr Function kHostFunctions[] = {
    // Profile-style files, one KEY=VALUE a line.
    HOST(genconfig_read_file, question, "Reads a file into a list.", kNoFailure, "path", "list"),
    HOST(genconfig_set_value, effect, "Sets a key in a list.", kNoFailure, "list", "key",
         secret("value")),
    HOST(genconfig_set_intvalue, effect, "Sets a key in a list to a number.", kNoFailure, "list",
         "key", "value"),
    HOST(genconfig_write_file, effect, "Writes a list over a file.", kNoFailure, "path", "list"),
    HOST(genconfig_free_ll, effect, "Frees a list's memory.", kNoFailure, "list"),
    HOST(genconfig_remove_item, effect, "Removes a key from a file.", kNoFailure, "path", "key"),
    HOST(genconfig_set_value_direct, effect, "Sets a key in a file.", kNoFailure, "path", "key",
         secret("value")),
    HOST(genconfig_set_intvalue_direct, effect, "Sets a key in a file to a number.", kNoFailure,
         "path", "key", "value"),
    HOST(genconfig_get_value_direct, question, "The value of a key in a file.", fails(-1), "path",
         "key", secret(text("value", 128))),
    // Wireless configuration records.
    HOST(read_wireless_conf, question, "The stored record 0 of a radio.", kNoFailure, "record",
         "ifname"),
    HOST(set_wireless_conf, effect, "Stores record 0 of a radio and applies it.", kNoFailure,
         "record", "ifname"),
    HOST(read_all_mbss_conf, question, "The stored records of a radio's BSSs; how many.",
         kNoFailure, "ifname", filled("records", 0, Used::result), size("max")),
    HOST(get_wlm_list, question, "The wl modes of the radios; -1 ends them.", fails(0)),
    HOST(get_wl_mode_by_ifname, question, "The wl mode of a radio's main or BSS interface.",
         kNoFailure, "ifname"),
    // System information and regulatory limits.
    HOST(get_si, question, "An information block: \"hw\", \"sw\", \"wifi\" or \"pi\".", kNoFailure,
         "name", secret(block("block", PLATFORM_SYSINFO_SIZE))),
    HOST(getsi_wifi_chipset_name, question, "The chipset of a radio; nonzero when it was written.",
         fails(0), "unit", "wl_mode", text("name", 0), size("size")),
    HOST(getsi_wifi_led_gpio, question, "The pin of a radio's LED.", fails(-1), "unit", "wl_mode"),
    HOST(get_wifi_regulated_pwr, question,
         "The transmit power that the country allows, in percent.", fails(-1), object("wifi"),
         "country", "channel", number("bandwidth_mhz", "MHz")),
    HOST(get_wifi_regulated_eeprom, question, "The country's calibration table of 32 entries.",
         fails(0), object("wifi"), "country", "channel", number("bandwidth_mhz", "MHz")),
    // Addresses and feature switches.
    HOST(get_my_mac, question, "The address of the device.", fails(0)),
    HOST(get_lan_ipconfig, question, "Address, netmask and gateway of the LAN.", kNoFailure,
         text("address", 64), text("netmask", 64), text("gateway", 64)),
    HOST(get_igmp_proxy, question, "Whether the IGMP proxy is on.", kNoFailure),
    HOST(easymesh_enabled, question, "Whether EasyMesh is on.", kNoFailure),
    HOST(easymesh_get_almac, question, "The EasyMesh address of the device.", fails(0)),
    HOST(easymesh_get_kdx_ie, question, "The vendor element of the beacons.", kNoFailure,
         "element"),
    HOST(easymesh_make_wsc_kdx_type_str, question, "The device name that WPS shows.", kNoFailure,
         text("text", 0), size("size")),
    // MAC filter and 802.1X.
    HOST(macauth_get_policy, question,
         "The policy of a BSS: 0 off, 1 deny or 2 allow only the listed.", kNoFailure, "wl_index"),
    HOST(macdb_read, question, "The address table of a BSS; it goes back to macdb_free.", fails(0),
         "wl_index", "max"),
    HOST(macdb_free, effect, "Frees an address table.", kNoFailure, "table"),
    HOST(hwinfo_get_max_macauth, question, "How many addresses a table may have.", kNoFailure),
    HOST(wireless_check_8021x_enabled, question, "Nonzero when the record uses 802.1X.", kNoFailure,
         "record"),
    HOST(wireless_check_8021x_enabled2, question, "Nonzero when the radio uses 802.1X.", kNoFailure,
         "wl_mode"),
    HOST(wireless_check_8021x_enable_for_band, question,
         "Nonzero when one of the records uses 802.1X.", kNoFailure, "ifname", "records", "count"),
    HOST(wireless_set_radius_iptables, effect, "Opens the firewall for the RADIUS servers.",
         kNoFailure, "ifname", "records", "count"),
    // Channels, LEDs, band steering and the state of a running radio.
    HOST(wireless_api_get_best_channel2, effect, "Starts a scan and writes the channel to use.",
         kNoFailure, "ifname", "country", number("bandwidth_mhz", "MHz"), filled("channel", 5)),
    HOST(wireless_check_channel_valid, question, "Whether a surveyed channel counts.", fails(0),
         "ifname", "argument", number("bandwidth_mhz", "MHz"), "channel"),
    HOST(wireless_set_led, effect, "Switches a radio's LED.", kNoFailure, "ifname", "state"),
    HOST(get_band_steering_running, question, "Whether band steering is on.", kNoFailure, "unit"),
    HOST(update_wl_conf_from_band_steering, question,
         "Puts the settings that the bands share into a record.", kNoFailure, changed("record"),
         "unit"),
    HOST(check_wireless_ifstatus, question, "Whether a radio is up.", fails(0), "wl_mode"),
    HOST(iwconfig_client_get_essid, question, "The SSID that an interface is on.", kNoFailure,
         "ifname", text("essid", 128)),
    HOST(iwconfig_client_get_ap_mac, question, "The BSSID that an interface is on; 0 when on none.", fails(0),
         "ifname", text("mac", 40)),
    HOST(iwconfig_client_get_channel, question, "The channel that an interface is on.", kNoFailure,
         "ifname", "spec"),
    HOST(iwconfig_client_get_link_speed, question, "The link speed of an interface.", kNoFailure,
         "ifname"),
    // Network interfaces and services.
    HOST(get_ifexist, question, "Whether an interface exists.", fails(0), "ifname"),
    HOST(get_ifstatus, question, "Whether an interface is up.", fails(0), "ifname"),
    HOST(ifup, effect, "Takes an interface up.", kNoFailure, "ifname"),
    HOST(ifdown, effect, "Takes an interface down.", kNoFailure, "ifname"),
    HOST(set_ifconfig, effect, "Sets address and netmask of an interface.", kNoFailure, "ifname",
         "address", "netmask"),
    HOST(is_default_config, question, "Whether the configuration is the factory default.",
         kNoFailure),
    HOST(stop_wan, effect, "Stops a WAN connection.", kNoFailure, "name"),
    HOST(get_wan_type, question, "The type of a WAN connection.", kNoFailure, "name",
         text("type", 128)),
    HOST(apply_network_configuration, effect, "Applies the network configuration.", kNoFailure),
    HOST(signal_start, effect, "Has a service started.", kNoFailure, "service"),
    HOST(signal_wan, effect, "Has the WAN service look again.", kNoFailure),
    // Commands and the system log.
    HOST(system2, effect, "Runs a command; its exit status.", kNoFailure, "format"),
    HOST(system3, effect, "Runs a command without its output; its exit status.", kNoFailure,
         "format"),
    HOST(syslog_msg, effect, "Writes a line to the system log.", kNoFailure, "level", "format"),
    // Texts and MAC addresses.
    HOST(sf_strncpy, question, "Copies a text, cut to the size with its terminator.", kNoFailure,
         text("destination", 0), "source", size("size")),
    HOST(trim_crcf, question, "Cuts a text at its line end.", kNoFailure,
         Parameter("text", Kind::changed_text)),
    HOST(strtoupper, question, "Turns a text to upper case.", kNoFailure,
         Parameter("text", Kind::changed_text)),
    HOST(strtomac, question, "The six bytes of an address text.", kNoFailure, "text", "mac"),
    HOST(mactostr, question, "The text of six bytes.", kNoFailure, "mac", text("text", 0),
         size("size")),
    HOST(maccmp, question, "Compares two address texts: 0 for the same address.", kNoFailure, "a",
         "b"),
    // Files, run-time status and stored configuration.
    HOST(file_exists, question, "Whether a file exists.", fails(0), "path"),
    HOST(get_file_string, question, "The first line of a file; 0 when nothing was read.", fails(0),
         "path", text("text", 0), size("size")),
    HOST(get_file_value, question, "The number in a file.", kNoFailure, "path", "argument"),
    HOST(write_file, effect, "Writes a text over a file.", fails(-1), "path", "text"),
    HOST(istatus_get_value_direct, question, "A run-time value.", fails(-1), "key",
         text("value", 256)),
    HOST(istatus_get_intvalue_direct, question, "A run-time number.", fails(-1), "key"),
    HOST(istatus_set_value_direct, effect, "Sets a run-time value.", kNoFailure, "key", "value"),
    HOST(iconfig_set_intvalue_direct, effect, "Stores a number in the configuration.", kNoFailure,
         "key", "value"),
    HOST(get_led_silent_control, question, "The silent hours of the LEDs.", kNoFailure,
         block("record", sizeof(led_silent_control)), "unit"),
    // Named inter-process locks.
    HOST(lock_file, effect, "Waits for a lock; its handle.", kNoFailure, "name"),
    HOST(unlock_file, effect, "Gives a lock back.", kNoFailure, "handle"),
    // Ethernet ports.
    HOST(get_iptv_config, question, "The stored IPTV mode; 1 is on.", kNoFailure),
    HOST(get_sniff_port, question, "Whether port mirroring is configured.", kNoFailure),
    HOST(read_portconfig, question, "The stored setting of a port; 0 when none is stored.", fails(0), "user_port",
         block("setting", sizeof(port_setting))),
    HOST(get_dev_port, question, "The switch port of a user port.", fails(-1), "hw", "user_port"),
    HOST(get_ux_port, question, "The user port of a switch port.", fails(-1), "hw", "switch_port"),
    // Host lists.
    HOST(alloc_add_list, effect, "Appends a node of zeros to a list.", fails(0), object("head"),
         number("size", "bytes")),
    HOST(free_all_list, effect, "Frees the nodes of a list.", kNoFailure, object("head"),
         object("destructor")),
};

}  // namespace

std::span<const Function> host_functions() {
    return kHostFunctions;
}

}  // namespace border
