/* Buttons and LEDs. */
#pragma once

#include "platform/export.h"

PLATFORM_BEGIN_DECLS

/* 1 while the button is pressed, else 0; also when there is no such button or pin file. */
PLATFORM_API int pushed_reset_button(void);
PLATFORM_API int pushed_wps_button(void);
PLATFORM_API int platform_get_rst_button_pressed(void);
PLATFORM_API int platform_get_wps_button_pressed(void);

/*
 * 1 when the button stays pressed for count samples that lie interval_ms apart, else 0 at the
 * first sample that finds it released. A count of 1 and less takes one sample; an interval of 0
 * and less makes no pause.
 */
PLATFORM_API int check_default_button(int interval_ms, int count);
PLATFORM_API int check_wps_button(int interval_ms, int count);

PLATFORM_API int init_gpio(void); /* 0 */

/* Gives the run LED, WPS button and plain Wi-Fi LED pins their GPIO function. 0. */
PLATFORM_API int init_gpio_after_insmod(void);

/* Lights an LED (any nonzero on) or puts it out. The host's write_file() result. */
PLATFORM_API int turn_led(int pin, int on);

/*
 * LED groups. Results: -1 when the board has no such LED, else turn_led()'s result, or
 * set_port_led_all()'s for the Ethernet ports. The radio is the place in the host's list; a wl mode
 * other than 0 and 1 is the result itself. Those that do nothing take any arguments.
 */
PLATFORM_API int platform_run_led_control(int on);
PLATFORM_API void platform_power_led_control(PLATFORM_ANY(int on)); /* does nothing */
PLATFORM_API int platform_wl_led_control(int radio, int on);
PLATFORM_API void platform_wan_led_control(PLATFORM_ANY(int port, int on)); /* does nothing */
PLATFORM_API int platform_lan_led_control(int port, int on);
PLATFORM_API int platform_usb_led_control(int port, int on); /* port 0 to 17 */
PLATFORM_API int platform_all_wl_led_control(int on);        /* the second LED's result */
PLATFORM_API int platform_all_wan_led_control(int on);
PLATFORM_API int platform_all_lan_led_control(int on);
PLATFORM_API int platform_all_usb_led_control(int on);             /* the number of USB LEDs */
PLATFORM_API void platform_init_led_control(PLATFORM_ANY(int on)); /* does nothing */

/* What the run LED shows, a text of the host's; "blink" when none is set. 0. */
PLATFORM_API int set_run_led_op(const char* operation);
PLATFORM_API int get_run_led_op(char* operation); /* 32 bytes */

/* 0 normal, 1 while the operation is "wps", 2 in the silent hours (UTC). */
PLATFORM_API int get_run_led_state(void);

/*
 * Switches all LEDs on (nonzero) or dark, if that changes anything or is forced; not in the
 * factory test mode. 0 when nothing was done, else set_port_led_all()'s result.
 */
PLATFORM_API int update_led_silent_control(int force, int on);

/*
 * The run LED blinks under led_ctl's command on this board: these do nothing, whatever they are
 * passed. Return 0.
 */
PLATFORM_API int stop_runled(PLATFORM_ANY(void));
PLATFORM_API int start_runled(PLATFORM_ANY(void));
PLATFORM_API int set_usbled(PLATFORM_ANY(void));
PLATFORM_API void gpio_set_led(PLATFORM_ANY(void)); /* no result */

PLATFORM_END_DECLS
