/*
 * Records that the host firmware and this library exchange: Ethernet ports and addresses.
 */
#pragma once

#include "platform/conf_records.h"

/* The state or the setting of one Ethernet port, as texts. */
struct port_setting {
    char mode[10];  /* state "On" or "Off"; setting "on", "off", "loop", "loopoff", "auto", other */
    char speed[10]; /* state "1G", "100", "10" or "--"; setting "1000", "100", "10" */
    char duplex[10]; /* state "Full", "Half" or "--"; setting "full", "half" */
};

/* Counters of one Ethernet port. The host's record goes on behind them. */
struct port_counters {
    uint64_t rx_packets;    /* unicast, multicast and broadcast */
    uint64_t rx_bytes;      /* as the switch counts */
    uint64_t rx_broadcast;  /* packets */
    uint64_t rx_multicast;  /* packets */
    uint64_t zero0;         /* 0 */
    uint64_t rx_dropped;    /* at ingress */
    uint64_t rx_crc_errors; /* packets */
    uint64_t zero1;         /* 0 */
    uint64_t reserved;
    uint64_t tx_packets;    /* unicast, multicast and broadcast */
    uint64_t tx_bytes;      /* as the switch counts */
    uint64_t tx_broadcast;  /* packets */
    uint64_t tx_multicast;  /* packets */
    uint64_t tx_collisions; /* of packets */
};

/* One address that the switch has learnt. */
struct switch_mac_entry {
    uint8_t mac[6];   /* of the device */
    uint8_t info;     /* low byte of the second address register */
    uint8_t port_map; /* bit p: learnt on switch port p */
};

/* A wired station, a node of the host's list. */
struct wired_station {
    struct wired_station* next; /* null in the last node */
    uint32_t kind;              /* 1 */
    uint8_t mac[6];             /* of the station */
    uint8_t reserved0[6];
    uint32_t user_port; /* that the station was learnt on */
    uint8_t reserved1[36];
};

/* The host's list of wired stations, zero before use. */
struct wired_station_list {
    uint32_t count; /* nodes */
    uint32_t reserved;
    struct wired_station* first; /* null in an empty list */
    void* second;                /* the host's */
};
