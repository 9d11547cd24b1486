// One life of the board: start it, change one setting, show what happened.
#pragma once

#include "run/capture.h"

struct wireless_conf;

namespace board::run {

// The library's functions that a session calls.
struct Platform {
    int (*set_ftm_cache)();
    int (*platform_init_wireless)();
    int (*platform_set_wireless)(const wireless_conf* record, const char* ifname);
};

// Runs on the board. 0 when it came up and the change arrived.
int run_session(const Platform& platform, Capture& capture);

}  // namespace board::run
