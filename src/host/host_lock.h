// The host's named inter-process lock, held for a scope.
#pragma once

#include "src/host/host.h"

namespace platform {

class HostLock {
public:
    explicit HostLock(const char* name) : handle_(lock_file(name)) {}
    ~HostLock() { unlock_file(handle_); }
    HostLock(const HostLock&) = delete;
    HostLock& operator=(const HostLock&) = delete;

private:
    intptr_t handle_;
};

// Keeps other processes from the switch.
class SwitchLock : public HostLock {
public:
    SwitchLock() : HostLock("switch") {}
};

}  // namespace platform
