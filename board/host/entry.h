// How a program that loads libboardhost.so configures the host; a real host has none of these.
#pragma once

#include <stdint.h>

extern "C" {

// Of the board in that folder of this machine. 0, or -1 after a complaint for each line of its
// configuration files that is not understood: "FILE:LINE: not understood: TEXT".
int board_check_configuration(const char* directory, void (*complain)(const char* text));

// From the board itself: its tree is "/". 0, or -1 after a message for what does not fit.
int board_load_state(const char* path);

// One line as the file has them.
int board_set_state(const char* line);

// Addresses are parted by blanks. -1: one of them is none.
int board_set_mac_filter(uint32_t wl_index, int policy, const char* addresses);

// Writes what has changed since it was loaded into the file; other lines stay. 0, or -1.
int board_save_state(const char* path);

}  // extern "C"
