/*
 * Records that the host firmware and this library exchange: the configuration.
 *
 * Their layout is exact: little-endian, integers of 32 bits, texts NUL-terminated within their
 * width (a text may fill its field whole, so readers bound it by the field).
 *
 * Members named reserved belong to the host. The library never reads or changes them and
 * carries them along when it copies a record.
 */
#pragma once

#include <stdint.h>

enum {
    PLATFORM_BSS_MAX = 4,         /* BSSs of one radio */
    PLATFORM_IFNAME_SIZE = 32,    /* buffer of an interface name */
    PLATFORM_PATH_SIZE = 128,     /* buffer of a profile path */
    PLATFORM_SYSINFO_SIZE = 4096, /* buffer of a system information block of unknown size */
    PLATFORM_WEP_KEYS = 4,
};

/* Which channel a radio runs on; also five words of other records. */
struct channel_spec {
    int32_t channel;       /* control channel, 0 = automatic */
    int32_t ext_channel;   /* second 20 MHz channel of a 40 MHz pair, or the centre channel */
    int32_t frequency_mhz; /* of the control channel */
    int32_t reserved;
    int32_t bandwidth_mhz; /* 20, 40 or 80; 0 as stored */
};

/* Codes of wireless_conf.auth_mode and apcli_auth_mode. */
enum wireless_auth {
    WIRELESS_AUTH_OPEN = 1,
    WIRELESS_AUTH_SHARED = 2,
    WIRELESS_AUTH_WEPAUTO = 3,
    WIRELESS_AUTH_WPA = 4,
    WIRELESS_AUTH_WPAPSK = 5,
    WIRELESS_AUTH_OPEN2 = 6,
    WIRELESS_AUTH_WPA2 = 8,
    WIRELESS_AUTH_WPA2PSK = 9,
    WIRELESS_AUTH_WPAPSKWPA2PSK = 10,
    WIRELESS_AUTH_WPA1WPA2 = 11,
};

/* Codes of wireless_conf.encryption and apcli_encryption. */
enum wireless_cipher {
    WIRELESS_CIPHER_NONE = 0,
    WIRELESS_CIPHER_WEP = 1,
    WIRELESS_CIPHER_WEP2 = 2,
    WIRELESS_CIPHER_TKIP = 3,
    WIRELESS_CIPHER_AES = 4,
    WIRELESS_CIPHER_TKIPAES = 5,
};

/*
 * Configuration of one BSS and its radio. Four in a row hold a radio's BSS set; record 0 also
 * carries the settings of the whole radio (marked R), which are read from no other record.
 */
struct wireless_conf {
    int32_t enabled; /* 0: the BSS stays down */
    uint8_t reserved0[8];
    char ssid[128];          /* of the network */
    int32_t wireless_mode;   /* R: 1 b/g, 2 b, 3 g, 4 n, 5 g/n, 6 b/g/n, 9 a/n, 10 and 11 a/n/ac */
    int32_t channel;         /* R: first word of the channel_spec, 0 = automatic */
    int32_t ext_channel;     /* R */
    int32_t channel_rest[3]; /* R: words 3 to 5 of the channel_spec */
    int32_t ssid_broadcast;  /* 0 hides the SSID */
    int32_t auth_mode;       /* enum wireless_auth */
    int32_t encryption;      /* enum wireless_cipher */
    uint8_t reserved1[20];
    int32_t wep_default_key;             /* 1 to 4 */
    int32_t wep_key_format;              /* 1 hexadecimal, otherwise ASCII */
    char wep_key[PLATFORM_WEP_KEYS][27]; /* keys 1 to 4 */
    char wpa_psk[108];                   /* pass phrase, or key in hexadecimal */
    uint8_t reserved2[12];
    int32_t tx_power;                          /* R: percent of the maximum */
    int32_t bg_protection;                     /* R */
    int32_t tx_preamble;                       /* R */
    int32_t rts_threshold;                     /* R: bytes */
    int32_t frag_threshold;                    /* R: bytes */
    int32_t tx_burst;                          /* R */
    int32_t tx_burst_slot_time;                /* R */
    int32_t beacon_period;                     /* R: time units of 1024 us */
    int32_t pkt_aggregate;                     /* R */
    int32_t short_slot;                        /* R */
    int32_t apcli_enable;                      /* R: repeater client on */
    char apcli_ssid[128];                      /* R */
    char apcli_bssid[20];                      /* R: text, may be empty */
    int32_t apcli_auth_mode;                   /* R: enum wireless_auth */
    int32_t apcli_encryption;                  /* R: enum wireless_cipher */
    int32_t apcli_wep_default_key;             /* R */
    int32_t apcli_wep_key_format;              /* R */
    char apcli_wep_key[PLATFORM_WEP_KEYS][27]; /* R */
    char apcli_wpa_psk[108];                   /* R */
    int32_t apcli_wan;     /* R: the repeater link is the WAN, not a bridge port */
    char wwan_ifname[72];  /* R: interface of the wireless WAN */
    int32_t bandwidth;     /* R: MHz 20, 40 or 80; 0 = 20/40 with coexistence */
    int32_t ht_rdg;        /* R: reverse direction grant */
    int32_t no_forwarding; /* station isolation: 1 isolates, 0 and 2 do not */
    int32_t wmm_capable;   /* R */
    int32_t apsd_capable;  /* R */
    uint8_t reserved3[4];
    int32_t dtim_period; /* R */
    uint8_t reserved4[8];
    char country_code[8]; /* R: two letters */
    int32_t bss_index;    /* slot of the BSS */
    uint8_t reserved5[36];
    int32_t wps_configured;  /* R: either flag nonzero means configured */
    int32_t wps_enable;      /* R */
    int32_t wps_configured2; /* R */
    int32_t dfs_enable;      /* R: 1 opens the radar detection channels */
    int32_t igmp_snoop;      /* R */
    uint8_t reserved6[16];
    char radius_server[32]; /* IPv4 text, empty when none */
    char radius_key[128];   /* shared with the server */
    int32_t radius_port;    /* 0 = 1812 */
    uint8_t reserved7[4];
    int32_t beamforming; /* R: bit 0 explicit, bit 1 implicit, bit 2 MU-MIMO */
    uint8_t reserved8[4];
    int32_t stream_count; /* R: spatial streams, 0 = leave as is */
};

/* Transmit power control of one band, part of hw_info. */
struct hw_tpc {
    int32_t enable;  /* 0: the texts go nowhere */
    char value[128]; /* text for the driver's "tpc" setting */
    char duty[128];  /* text for the driver's "tpc_duty" setting */
};

/* One Wi-Fi LED, part of hw_info. */
struct hw_wl_led {
    int32_t gpio;    /* pin, -1 none */
    char driven[16]; /* "gpio" for a plain pin */
};

/* The hardware information block, get_si("hw"). Pins are -1 where the board has none. */
struct hw_info {
    uint8_t reserved0[164];
    char switch_chip[148]; /* "mt7530" or "mt7531" */
    struct hw_tpc tpc_2g;  /* of wl mode 0 */
    uint8_t reserved1[76];
    struct hw_tpc tpc_5g; /* of wl mode 1 */
    uint8_t reserved2[32];
    int32_t usb_count; /* entries of usb_led_gpio in use */
    uint8_t reserved3[112];
    int32_t run_led_gpio;       /* pin */
    int32_t reset_button_gpio;  /* pin */
    int32_t wps_button_gpio;    /* pin */
    struct hw_wl_led wl_led[2]; /* of wl mode 0 and 1 */
    int32_t usb_led_gpio[18];   /* pins */
    int32_t lan_port_count;     /* LAN ports 1 to n */
    int32_t wan_port_count;     /* WAN ports 1 to n */
    int32_t iptv_port;          /* user port index, -1 none */
    uint8_t reserved4[304];
};

/*
 * The software information block, get_si("sw"), holds two helper-BSS entries. The SSID's nominal
 * width overlaps the fields that follow it, so the block is read by offset and not by a struct:
 * an SSID of 64 and more characters runs into the secured flag and the key.
 */
enum sw_info_layout {
    SW_INFO_HELPER_STRIDE = 384,  /* from entry 1 to entry 2 */
    SW_INFO_HELPER_PRESENT = 64,  /* i32, read of entry 2 only */
    SW_INFO_HELPER_SSID = 68,     /* char[128] */
    SW_INFO_HELPER_SECURED = 132, /* i32 */
    SW_INFO_HELPER_KEY = 136,     /* char[108] */
    SW_INFO_HELPER_HIDDEN = 440,  /* i32 */
};

/* One entry of the MAC filter table. */
struct mac_filter_entry {
    int32_t inactive; /* 0 for an entry in force */
    uint8_t mac[6];   /* of the station */
    uint8_t reserved[14];
};

/* Head of the MAC filter table of macdb_read(); its entries follow directly. */
struct mac_filter_table {
    int32_t count; /* of the entries that follow */
    int32_t reserved;
};

/* The vendor information element that the access points announce. */
struct vendor_element {
    uint8_t first[4];  /* raw bytes, as the next two */
    uint8_t second[6]; /* behind the first */
    uint8_t third[6];  /* behind the second */
    char text[16];     /* NUL-terminated when shorter */
};

/* One entry of the regulatory calibration table, which has REGULATED_EEPROM_ENTRIES of them. */
struct regulated_eeprom_entry {
    int32_t in_use; /* 0: the entry counts for nothing */
    int32_t first;  /* byte before the colon of the driver's pair */
    int32_t second; /* byte behind it */
};
enum { REGULATED_EEPROM_ENTRIES = 32 };

/* Settings of the LEDs' silent hours. */
struct led_silent_control {
    uint32_t mode;       /* 0 normal, 1 always silent, otherwise silent from start to end */
    uint32_t start_hour; /* 0 to 23, UTC */
    uint32_t end_hour;   /* the first that is not silent */
};
