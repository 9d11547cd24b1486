/*
 * The Ethernet switch behind eth0.
 *
 * Ports are named by the host's user port index: i for LAN port i, 0x10000 + j for WAN port j.
 * What is said to hold the switch lock does its whole work under the host's inter-process lock
 * "switch". When the Ethernet driver refuses a register, the calling process ends with status 0
 * after a message. Link, counters and settings of a user port index that the host maps to no
 * switch port, or with a null record, give -1: nothing is read from or written to the switch, and
 * no record is touched (for the modes "loop" and "loopoff" see set_port_config()). Null entries,
 * lists and addresses are answered at once: 0, and -1 for a port number.
 */
#pragma once

#include <stdint.h>

#include "platform/export.h"
#include "platform/records.h"

PLATFORM_BEGIN_DECLS

/*
 * Opens the process's switch control socket and returns it; closes it and returns close()'s result.
 * Every init wants its fini before the next. Without a socket the process ends.
 */
PLATFORM_API int switch_ioctl_init(void);
PLATFORM_API int switch_ioctl_fini(void);

/* Read and write a switch register through the open control socket. 0. */
PLATFORM_API int reg_read_ioctl(uint32_t offset, uint32_t* value);
PLATFORM_API int reg_write_ioctl(uint32_t offset, uint32_t value);
PLATFORM_API int reg_read(uint32_t offset, uint32_t* value);
PLATFORM_API int reg_write(uint32_t offset, uint32_t value);

/* Rebuild the LAN and WAN VLANs, by the stored IPTV mode (1 is on) or by a flag. 0. */
PLATFORM_API int reinit_vlan(void);
PLATFORM_API int set_iptv_system(int iptv);

/* Builds the VLANs only in IPTV mode: 0; otherwise the host's IPTV configuration value. */
PLATFORM_API int init_ethernet_switch(void);

/* Link, speed and duplex of a port, under the switch lock. 0. */
PLATFORM_API int get_link_status(int user_port, struct port_setting* state);

/* MIB counters of a port, under the switch lock; bytes 64 to 71 keep their value. 0. */
PLATFORM_API int get_eport_stat(int user_port, struct port_counters* counters);

/* Clears the counters of all ports, under the switch lock. 0. */
PLATFORM_API int clear_port_statistics(void);

/*
 * Switches a port on or off, or sets what it advertises (IEEE 802.3 clause 22 registers 4 and 9),
 * under the switch lock. 0. The modes "loop" and "loopoff" are not available on this board: they
 * print a line and return 0 for every user port index, whether or not it has a switch port. The
 * second form applies the stored settings of all ports.
 */
PLATFORM_API int set_port_config(int user_port, const struct port_setting* setting);
PLATFORM_API int init_portconfig(void);

/*
 * Mirrors the other LAN ports to a monitor port; 0 switches mirroring off. 0. The second form
 * makes LAN port 1 the monitor port when mirroring is configured.
 */
PLATFORM_API int set_sniff_port(int user_port);
PLATFORM_API int init_sniff_port(void);

/* Switches all port LEDs of an MT7530 or MT7531. 0. */
PLATFORM_API int set_port_led_all(int on);

PLATFORM_API int mtk_optimize_set(void); /* 0 */

/*
 * Walks the switch's address table from its start: the unicast addresses learnt on a port of the
 * mask (one bit for each switch port), at most capacity of them. Returns how many were stored.
 * Takes a millisecond for each address. The walk gives up, with a line on standard error, when the
 * switch presents no entry for twenty seconds on end, and after 65536 aged entries; what was stored
 * until then counts. The second form holds the switch lock and warns when the capacity was reached.
 */
PLATFORM_API int mt753x_get_all_macentry(struct switch_mac_entry* entries, int capacity,
                                         int port_mask);
PLATFORM_API int ethswitch_get_all_macentry(struct switch_mac_entry* entries, int capacity,
                                            int port_mask);

/* Appends a node for each wired station; the list's node count, or 0 without memory. */
PLATFORM_API int apcp_get_stalist_from_ethswitch(struct wired_station_list* list);

/* The user port index that an address was learnt on, or -1; whether it was learnt: 1 or 0. */
PLATFORM_API int ethswitch_get_port_num(const char* mac);
PLATFORM_API int ethswitch_search_mac_table(const char* mac);

/* 1 when the port that an address was learnt on has link, else 0. */
PLATFORM_API int ethswitch_get_mac_port_link(const char* mac);

/*
 * Deletes an address, under the switch lock. It is a text when there is a ":" or "-" among its
 * first six characters, or else six raw bytes (so raw bytes that hold 0x3A or 0x2D read as a
 * text: pass those as text). Fields that a text lacks count as 0. 0.
 */
PLATFORM_API int ethswitch_del_mac(const void* mac);

/* Empties the address table, under the switch lock. 0. */
PLATFORM_API int ethswitch_clear_mactable(void);

PLATFORM_END_DECLS
