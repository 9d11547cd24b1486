/* The public headers are C: this file compiles as such. */
#include "platform/platform.h"

platform_slot platform_fourth_slot(void);
int platform_any_arguments(void);

platform_slot platform_fourth_slot(void) {
    return platform_get_drv()->refresh_non_ipv4_input_rule;
}

/* What ignores its arguments takes none, one and several. */
int platform_any_arguments(void) {
    platform_power_led_control(1);
    platform_wan_led_control();
    platform_init_led_control("on", 2);
    gpio_set_led(1, 2);
    return set_usb_mode(2) + platform_save() + platform_default("all", 1) + platform_restore(1L) +
           platform_reset(0) + set_pincode_flash("12345670") + get_pincode_flash(0) +
           stop_runled(0) + start_runled(1, 2) + set_usbled(1) + wireless_macauth_kickall(0, "ra0") +
           wireless_macauth_kickmac("ra0", "00:11:22:33:44:55");
}
