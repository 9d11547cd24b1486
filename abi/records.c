/*
 * Names the records and codes that host and library exchange by untyped pointers and plain numbers,
 * so that they are part of the compared interface, too.
 */
#include "platform/platform.h"

PLATFORM_API void use_records(struct hw_info* hw, struct mac_filter_table* table,
                              struct mac_filter_entry* entry,
                              struct regulated_eeprom_entry* regulated,
                              struct led_silent_control* silent);
PLATFORM_API void use_codes(enum wireless_auth auth, enum wireless_cipher cipher,
                            enum wps_state state, enum sw_info_layout layout);

void use_records(struct hw_info* hw, struct mac_filter_table* table, struct mac_filter_entry* entry,
                 struct regulated_eeprom_entry* regulated, struct led_silent_control* silent) {
    (void)hw, (void)table, (void)entry, (void)regulated, (void)silent;
}

void use_codes(enum wireless_auth auth, enum wireless_cipher cipher, enum wps_state state,
               enum sw_info_layout layout) {
    (void)auth, (void)cipher, (void)state, (void)layout;
}
