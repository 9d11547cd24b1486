// What this board answers whatever it is asked: it has no such part, or nothing is to be done.
#include "platform/flash.h"
#include "platform/gpio.h"
#include "platform/switch.h"
#include "platform/wireless.h"
#include "platform/wps.h"

// clang-format off

// flash.h
int soft_reset() { return -1; }
int set_pincode_flash() { return 0; }
int get_pincode_flash() { return 0; }
int get_usb_mode() { return 2; }
int set_usb_mode() { return 0; }
int platform_save() { return 0; }
int platform_default() { return 0; }
int platform_restore() { return 0; }
int platform_reset() { return 0; }
int platform_preinit(int value) { return value; }

// gpio.h
int init_gpio() { return 0; }
int stop_runled() { return 0; }
int start_runled() { return 0; }
int set_usbled() { return 0; }
void gpio_set_led() {}
void platform_power_led_control(int) {}
void platform_wan_led_control(int, int) {}
void platform_init_led_control(int) {}

// switch.h
int mtk_optimize_set() { return 0; }

// wireless.h
int wireless_macauth_kickall() { return 0; }
int wireless_macauth_kickmac() { return 0; }
int wireless_api_get_keyinfo_status() { return 1; }
int rt61_get_hostinfo_from_wireless() { return 0; }
int platform_wireless_api_stop_ap_scan() { return 0; }

// wps.h
int wireless_update_wps() { return 0; }
int wireless_set_wps_led(const char*, int) { return 0; }
