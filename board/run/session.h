// One life of the board: start it, change one setting, use its radios, show what happened.
#pragma once

#include <dlfcn.h>

#include <stdexcept>

#include "platform/records.h"
#include "run/capture.h"

namespace board::run {

// The library's functions that a session calls: those that every run needs, and any other by name.
struct Platform {
    void* library;

    template <class Function>
    Function* find(const char* name) const {
        auto* const function = reinterpret_cast<Function*>(::dlsym(library, name));
        if (function == nullptr) throw std::runtime_error(::dlerror());
        return function;
    }

    int (*set_ftm_cache)();
    int (*platform_init_wireless)();
    int (*platform_set_wireless)(const wireless_conf* record, const char* ifname);
};

// A function of the library by its declared name.
#define PLATFORM_CALL(platform, name) (platform).find<decltype(::name)>(#name)

// Runs on the board. 0 when it came up and the change arrived.
int run_session(const Platform& platform, Capture& capture);

}  // namespace board::run
