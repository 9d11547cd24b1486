/*
 * Flash partitions, calibration data and platform start, boot environment, MAC addresses, boot
 * flags and the factory test mode.
 *
 * Partitions are named as /proc/mtd lists them, in at most 29 characters; a longer name is no
 * partition's, and neither is one that begins with "-", which the mtd tool would take for an
 * option. Nothing is cached, and callers that write a partition must not overlap.
 *
 * Boot variables live in the u-boot environment, which the board's uboot_env tool reads and, with
 * the mtd tool, writes into the "Config" partition. Every byte of a name and of a value reaches
 * the tool as it is. A name and value leave the environment as it was when they have more than 208
 * characters together, or 464 as quoted for the shell; a name is too long to be read with more than
 * 236, or 492 quoted. Quoting adds two characters to a text that is not all letters, digits and
 * _-./:,=+@%, and three more for each "'" in it. A name that begins with "-" is neither read nor
 * set: the tool would take it for an option. Nothing is locked: callers serialise environment
 * writes. A null address, text or interface name, where null is not said to mean something, does
 * nothing and gives the usual result.
 */
#pragma once

#include <stdint.h>

#include "platform/export.h"

PLATFORM_BEGIN_DECLS

/* An open descriptor of the partition's device (closed on exec), or -1. */
PLATFORM_API int mtd_open(const char* name, int flags);

/* Bytes; 0 when there is no such partition, -1 when /proc/mtd cannot be read. */
PLATFORM_API uint32_t mtd_get_size(const char* name);

/*
 * Reads from an offset into the partition. The number of bytes, fewer at its end; -1 for a
 * device that cannot be opened or read, a null buffer, and a negative offset or length.
 */
PLATFORM_API int mtd_readbuf(void* buffer, int offset, int length, const char* name);

/*
 * Writes bytes offset to offset + length - 1 of the buffer over the start of the partition. 0 when
 * they were handed to the mtd tool, whose own result is not known; -1 when it cannot be started,
 * for a null buffer, for negative numbers and for what is no partition's name.
 */
PLATFORM_API int mtd_writebuf(const void* buffer, int offset, int length, const char* name);

/* The same for the partition "Config"; a null buffer writes the seven bytes "DEFAULT". */
PLATFORM_API uint32_t get_config_region_size(void);
PLATFORM_API int read_config(void* buffer, int offset, int length);
PLATFORM_API int write_config(const void* buffer, int length);

/* A device name of the host's as this board calls it: the same, cut to size. 1. */
PLATFORM_API int get_kdx_devname(const char* source, char* destination, int size);

/*
 * Whether the "Factory" partition holds calibration data for both radios: 0, or -1 when a radio's
 * first four bytes are all 0x00 or all 0xFF, cannot be read, or are nowhere (no offset known). Of
 * four bytes of which the partition ends before the last, the missing ones count as 0x00.
 */
PLATFORM_API int check_eeprom(void);

/*
 * Writes an image (null: the default one) over the "Factory" partition. Returns 0 after it was
 * handed to mtd_writebuf(), whose result is not looked at, else -1 with the partition as it was.
 *
 * An image of exactly the partition's size replaces everything, whatever it holds and whatever the
 * partition holds: good calibration data of either radio, too. Refused are a file that is empty,
 * larger than the partition, unreadable or without a size (a folder, a pipe), and every file while
 * the partition's size is not known or above 2147483647. A smaller file is completed with the
 * partition's present content. It is refused when that cannot be read, and when a radio would lose
 * good data by it: when it ends within the 1024 bytes of that radio, or begins them with four bytes
 * of 0x00 or of 0xFF.
 */
PLATFORM_API int install_eeprom(const char* path);

/*
 * Copies the first 65536 bytes of "Factory", or as many as can be read, into the driver's file in
 * /lib/firmware, named by EEPROM_name of the first radio. When nothing of "Factory" can be read, an
 * existing file keeps its content and a missing one is created empty. Returns 0; -1 when the file
 * cannot be opened or written whole (then it is removed), when the name is missing, holds a "/" or
 * has more than 17 characters, and without memory.
 */
PLATFORM_API int extract_eeprom(void);

/* Kernel modules in the order of loading. */
enum { MODULE_COUNT = 105 };
PLATFORM_API extern const char* const module_list[MODULE_COUNT];

/*
 * Start of the platform: calibration data (the default image where there is none), kernel
 * modules, pins. What fails is reported and the start goes on. init_gpio_after_insmod()'s result.
 */
PLATFORM_API int init_mt7622(void);

/*
 * Reads a boot variable as one line into value[size]. All of value[size] is cleared first, whatever
 * the result: an unset variable, and one that could not be read, leaves the empty text. Of a value
 * with line feeds it gives the first line. Returns 1 when the tool ran; 0 when it did not or
 * its answer cannot be read, when there is no room, and for a name that is empty, too long or
 * begins with "-".
 */
PLATFORM_API int get_bootconfig(const char* name, char* value, int size);

/*
 * Action "set" sets every name=value pair of the argument, pairs separated by "&" (which no value
 * can hold); pieces without "=" are skipped. Action "default" only prints a notice. Always 0.
 */
PLATFORM_API int set_bootconfig(const char* action, const char* argument);

/*
 * The MAC address of "eth0", "ra0", "rai0" or "eth1": the base address ("ethaddr", or
 * 00:9F:33:00:11:20 when the tool cannot run or be read) with 3, 2, 7 or 1 added to its last byte,
 * without carry. Every other name, and null, gives the base address. Always 1.
 */
PLATFORM_API int get_hwaddr_flash_raw(const char* ifname, uint8_t mac[6]);

/* The same as upper-case text with colons, in a buffer of at least 18 bytes. Always 1. */
PLATFORM_API int get_hwaddr_flash(const char* ifname, char* text);

/*
 * Stores a base address as "ethaddr" and in both radios' calibration data. Always returns 1.
 *
 * The second form takes a text, which the host's strtomac() turns into bytes that were zeroed
 * before. It refuses none: a text that strtomac() cannot read stores 00:00:00:00:00:00.
 */
PLATFORM_API int set_hwaddr_flash_raw(const uint8_t mac[6]);
PLATFORM_API int set_hwaddr_flash(const char* text);

/*
 * Writes an address into EEPROM words 4, 6 and 8 of a radio and commits them. The second form
 * writes it into the first radio and, with 2 added to the last byte (no carry), into the second.
 * Always 0.
 */
PLATFORM_API int mt762x_set_eeprom_mac(const char* ifname, const uint8_t mac[6]);
PLATFORM_API int mt762x_update_wl_eeprom(const uint8_t mac[6]);

/*
 * The diagnostics flag: 0 when the boot variable "diag" is "0", else 1. The first answer since
 * power-on is kept in /tmp/diag_flag, whose number is given until the next start. When the tool
 * cannot run or be read the answer is 1 with a message, and nothing is kept.
 */
PLATFORM_API int check_diag_flag(void);
PLATFORM_API int write_diag_flag(void); /* sets "diag" to "1" for the next start; 0 */
PLATFORM_API int clear_diag_flag(void); /* sets "diag" to "0" for the next start; 0 */

/* Whether the boot variable "ftm" asks for the factory test mode, and the request for it. */
PLATFORM_API int check_ated_flag(void);
PLATFORM_API int set_ated_flag(void); /* 0 */

/* Sends SIGTERM to process 1. 0. */
PLATFORM_API int send_system_reboot_signal(void);

/*
 * Restores a backup file. Returns 0 when the restore tool succeeded, else -1; also for a null or
 * empty path, one that begins with "-" and one of more than 4203 characters, or 4459 as quoted for
 * the shell.
 */
PLATFORM_API int restore_backup_config(const char* path);

/* Not available on this board: -1. */
PLATFORM_API int soft_reset(void);

/* The WPS PIN is not kept in flash on this board. Return 0, whatever they are passed. */
PLATFORM_API int set_pincode_flash(PLATFORM_ANY(void));
PLATFORM_API int get_pincode_flash(PLATFORM_ANY(void));

/* 1 while the marker /tmp/factory_default_mode exists, else 0. */
PLATFORM_API int is_factory_test_mode(void);

/*
 * Turns the boot variable "ftm" = "on" into that marker, which lasts until the next start. 1 when
 * it was asked for, else 0. Runs before anything that asks is_factory_test_mode().
 */
PLATFORM_API int set_ftm_cache(void);

/* Entry points that this board answers at once. */
PLATFORM_API int get_usb_mode(void);          /* 2 */
PLATFORM_API int platform_preinit(int value); /* its argument */

/* So are these, with 0, whatever they are passed. */
PLATFORM_API int set_usb_mode(PLATFORM_ANY(void));
PLATFORM_API int platform_save(PLATFORM_ANY(void));
PLATFORM_API int platform_default(PLATFORM_ANY(void));
PLATFORM_API int platform_restore(PLATFORM_ANY(void));
PLATFORM_API int platform_reset(PLATFORM_ANY(void));

PLATFORM_END_DECLS
