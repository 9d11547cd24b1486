#include "boardctl/call/signature.h"

namespace boardctl::calls {
namespace {

constexpr uint32_t kMacTextRoom = 18;
constexpr uint32_t kLedOperationRoom = 32;

constexpr Function kSystemFunctions[] = {
    // flash.h
    FUNCTION(mtd_open, "Opens a partition's device; the descriptor lasts as long as the call.",
             "name", "flags"),
    FUNCTION(mtd_get_size, "Bytes of a partition, 0 when there is none.", "name"),
    FUNCTION(mtd_readbuf, "Reads from a partition; how many bytes, or -1.",
             filled("buffer", 0, Used::result), "offset", size("length"), "name"),
    FUNCTION(mtd_writebuf, "Writes part of the bytes over the start of a partition.",
             bytes("buffer"), Parameter("offset", Kind::offset), length("length"), "name"),
    FUNCTION(get_config_region_size, "Bytes of the partition \"Config\"."),
    FUNCTION(read_config, "Reads from \"Config\"; how many bytes, or -1.",
             filled("buffer", 0, Used::result), "offset", size("length")),
    FUNCTION(write_config, "Writes bytes, or \"DEFAULT\" for none, over the start of \"Config\".",
             bytes("buffer"), length("length")),
    FUNCTION(get_kdx_devname, "A device name of the host's as this board calls it.", "source",
             text("destination", 0), size("size")),
    FUNCTION(check_eeprom, "0 when both radios have calibration data, else -1."),
    FUNCTION(install_eeprom, "Writes an image (- : the default one) over \"Factory\".", "path"),
    FUNCTION(extract_eeprom, "Copies \"Factory\" into the driver's calibration file."),
    FUNCTION(init_mt7622, "Starts the platform: calibration data, kernel modules, pins."),
    FUNCTION(get_bootconfig, "Reads a boot variable.", "name", text("value", 0), size("size")),
    FUNCTION(set_bootconfig, "Action \"set\" sets name=value pairs, which \"&\" parts.", "action",
             "argument"),
    FUNCTION(get_hwaddr_flash_raw, "The MAC address of an interface, from the boot variables.",
             "ifname", "mac"),
    FUNCTION(get_hwaddr_flash, "The same as text.", "ifname", text("text", kMacTextRoom)),
    FUNCTION(set_hwaddr_flash_raw, "Stores the board's base address.", "mac"),
    FUNCTION(set_hwaddr_flash, "The same from text.", "text"),
    FUNCTION(mt762x_set_eeprom_mac, "Writes an address into a radio's calibration data.", "ifname",
             "mac"),
    FUNCTION(mt762x_update_wl_eeprom, "Writes an address into both radios' calibration data.",
             "mac"),
    FUNCTION(check_diag_flag, "The diagnostics flag, 0 or 1."),
    FUNCTION(write_diag_flag, "Sets the diagnostics flag for the next start."),
    FUNCTION(clear_diag_flag, "Clears the diagnostics flag for the next start."),
    FUNCTION(check_ated_flag, "1 when the next start is to be in the factory test mode."),
    FUNCTION(set_ated_flag, "Asks for the factory test mode at the next start."),
    FUNCTION(send_system_reboot_signal, "Restarts: sends SIGTERM to process 1."),
    FUNCTION(restore_backup_config, "Restores a backup file.", "path"),
    FUNCTION(soft_reset, "Not available on this board: -1."),
    FUNCTION(set_pincode_flash, "The WPS PIN is not kept in flash: 0."),
    FUNCTION(get_pincode_flash, "The WPS PIN is not kept in flash: 0."),
    FUNCTION(is_factory_test_mode, "1 in the factory test mode, else 0."),
    FUNCTION(set_ftm_cache, "Turns a request for the factory test mode into its marker."),
    FUNCTION(get_usb_mode, "Answered at once: 2."),
    FUNCTION(set_usb_mode, "Answered at once: 0."),
    FUNCTION(platform_save, "Answered at once: 0."),
    FUNCTION(platform_default, "Answered at once: 0."),
    FUNCTION(platform_restore, "Answered at once: 0."),
    FUNCTION(platform_reset, "Answered at once: 0."),
    FUNCTION(platform_preinit, "Answers its argument.", "value"),
    // frame.h
    FUNCTION(platform_get_drv, "The driver descriptor: which of its slots are set."),
    // gpio.h
    FUNCTION(pushed_reset_button, "1 while the reset button is pressed."),
    FUNCTION(pushed_wps_button, "1 while the WPS button is pressed."),
    FUNCTION(platform_get_rst_button_pressed, "1 while the reset button is pressed."),
    FUNCTION(platform_get_wps_button_pressed, "1 while the WPS button is pressed."),
    FUNCTION(check_default_button, "1 when the reset button stays pressed for all samples.",
             "interval_ms", "count"),
    FUNCTION(check_wps_button, "1 when the WPS button stays pressed for all samples.",
             "interval_ms", "count"),
    FUNCTION(init_gpio, "Does nothing: 0."),
    FUNCTION(init_gpio_after_insmod, "Gives the LED and button pins their GPIO function."),
    FUNCTION(turn_led, "Lights an LED or puts it out.", "pin", "on"),
    FUNCTION(platform_run_led_control, "The run LED.", "on"),
    FUNCTION(platform_power_led_control, "Does nothing.", "on"),
    FUNCTION(platform_wl_led_control, "The LED of a radio, by its place in the host's list.",
             "radio", "on"),
    FUNCTION(platform_wan_led_control, "Does nothing.", "port", "on"),
    FUNCTION(platform_lan_led_control, "The LEDs of the Ethernet ports.", "port", "on"),
    FUNCTION(platform_usb_led_control, "The LED of USB port 0 to 17.", "port", "on"),
    FUNCTION(platform_all_wl_led_control, "The LEDs of all radios.", "on"),
    FUNCTION(platform_all_wan_led_control, "The LEDs of the WAN ports.", "on"),
    FUNCTION(platform_all_lan_led_control, "The LEDs of the LAN ports.", "on"),
    FUNCTION(platform_all_usb_led_control, "The LEDs of all USB ports.", "on"),
    FUNCTION(platform_init_led_control, "Does nothing.", "on"),
    FUNCTION(set_run_led_op, "What the run LED shows (- : \"blink\").", "operation"),
    FUNCTION(get_run_led_op, "What the run LED shows.", text("operation", kLedOperationRoom)),
    FUNCTION(get_run_led_state, "0 normal, 1 during WPS, 2 in the silent hours."),
    FUNCTION(update_led_silent_control, "Switches all LEDs on or dark.", "force", "on"),
    FUNCTION(stop_runled, "Does nothing: 0."),
    FUNCTION(start_runled, "Does nothing: 0."),
    FUNCTION(set_usbled, "Does nothing: 0."),
    FUNCTION(gpio_set_led, "Does nothing."),
    // profile.h
    FUNCTION(wsc_profile_update, "Writes the WPS identity into the radios' profiles."),
    FUNCTION(mtk_profile_update_for_easymesh, "Writes what EasyMesh needs into the profiles."),
};

}  // namespace

std::span<const Function> system_functions() {
    return kSystemFunctions;
}

}  // namespace boardctl::calls
