/*
 * Records that the host firmware and this library exchange: stations, networks, WPS.
 */
#pragma once

#include "platform/conf_records.h"

/* One associated station. Columns are those of the driver's table, counted from 1. */
struct station_entry {
    char mac[18]; /* "00-11-22-AA-BB-CC" */
    uint8_t reserved0[34];
    uint32_t wl_index; /* of its BSS; BSS number 4096 for a repeater-client link */
    int32_t column3;   /* of the driver's table, as are the next */
    int32_t column8;   /* either format */
    uint8_t reserved1[4];
    int32_t column9;  /* old table format */
    int32_t column10; /* old table format */
    uint8_t reserved2[4];
    uint64_t column9_v2;  /* V2 table format */
    uint64_t column10_v2; /* V2 table format */
    int32_t column6;      /* either format */
    int32_t column7;      /* either format */
    uint8_t reserved3[8];
    int32_t chain_best; /* V2: best of the chain values */
    int32_t chain[8];   /* V2: column 11, one value for each receive chain */
    char ssid[128];     /* of its BSS, at most 32 bytes, the rest zero */
    uint8_t reserved4[4];
};

enum { STATION_LIST_MAX = 128, STATION_LIST_TYPE = 19 };

/* The stations of one radio. */
struct station_list {
    uint32_t count;                                 /* entries in use */
    uint32_t type;                                  /* STATION_LIST_TYPE */
    char ifname[PLATFORM_IFNAME_SIZE];              /* in: main interface of the radio */
    struct station_entry entries[STATION_LIST_MAX]; /* in the order of the driver's table */
};

/* ap_entry.flags */
enum { AP_FLAG_WPS_PUSH_BUTTON = 1 };

/* One access point of a site survey. */
struct ap_entry {
    char ssid[128];                /* at most 32 characters */
    char bssid[40];                /* upper-case text */
    struct channel_spec channel;   /* words 1 to 3; ext_channel is the centre channel */
    int32_t signal;                /* 0 to 100 */
    int32_t rssi;                  /* dBm */
    uint32_t seen_at;              /* seconds since the epoch */
    int32_t network_type;          /* 0 infrastructure, 1 ad hoc, -1 other */
    int32_t encryption;            /* enum wireless_cipher */
    int32_t auth_mode;             /* enum wireless_auth, 7 = WPA-None */
    uint32_t flags;                /* AP_FLAG_WPS_PUSH_BUTTON */
    struct vendor_element element; /* zero when it announces none */
};

enum { AP_LIST_MAX = 256, AP_LIST_TYPE = 7 };

/* The networks of a site survey. */
struct ap_list {
    uint32_t count;                       /* entries in use */
    uint32_t type;                        /* AP_LIST_TYPE */
    char ifname[PLATFORM_IFNAME_SIZE];    /* in: an interface of the radio */
    uint64_t channel_check;               /* in: handed unchanged to the host's channel check */
    struct ap_entry entries[AP_LIST_MAX]; /* in the order of the survey's text */
};

/* Radar detection of a 5 GHz radio. */
struct dfs_info {
    int32_t rd_mode;             /* 0, 1 or 2 */
    int32_t channel_moving_time; /* as the driver counts it */
    int32_t remaining;           /* of the moving time, never below 0 */
};

/* How a WPS run is to start. */
struct wps_start_request {
    int32_t use_pin; /* 0: push button */
    int32_t pin;     /* read only with use_pin */
};

/* States of a WPS run; -1 when the driver does not answer. */
enum wps_state {
    WPS_STATE_IDLE = 1,
    WPS_STATE_STARTED = 2,
    WPS_STATE_RUNNING = 3,
    WPS_STATE_CONFIGURED = 4,
    WPS_STATE_FAILED = 5,
};

/* A WPS run and the device at its other end. */
struct wsc_peer_info {
    uint32_t state;         /* enum wps_state */
    uint32_t time;          /* of the query, seconds since the epoch */
    char manufacturer[64];  /* of the other device, as the next */
    char model_name[64];    /* as it names itself */
    char device_name[64];   /* as it names itself */
    char model_number[64];  /* as it names itself */
    char serial_number[64]; /* as it names itself */
};
