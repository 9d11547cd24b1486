/* The driver descriptor that the host asks for first. */
#pragma once

#include "platform/export.h"

PLATFORM_BEGIN_DECLS

/* A function of the descriptor. */
typedef int (*platform_slot)(void);

/*
 * Seven slots; the host calls those that are set. On this board only the fourth is.
 */
struct platform_driver {
    platform_slot reserved0[3];
    /*
     * Keeps exactly one rule at the head of the bridge INPUT chain that accepts everything but
     * IPv4. Returns the system() status of the inserting command.
     */
    platform_slot refresh_non_ipv4_input_rule;
    platform_slot reserved1[3];
};

/* The board's descriptor. */
PLATFORM_API extern const struct platform_driver platform_drv;

/* The address of platform_drv, the same at every call. */
PLATFORM_API const struct platform_driver* platform_get_drv(void);

PLATFORM_END_DECLS
