// The one owner of handles: descriptors, streams, memory, tables of the host.
#pragma once

#include <utility>

namespace platform {

// Closes what it owns at the end of its scope. It can be moved, not copied. A closer that asks the
// system keeps errno.
template <class T, T kNone, auto kClose>
class Unique {
public:
    Unique() = default;
    explicit Unique(T handle) : handle_(handle) {}
    Unique(Unique&& other) noexcept : handle_(other.release()) {}
    Unique& operator=(const Unique&) = delete;
    ~Unique() {
        if (ok()) kClose(handle_);
    }

    bool ok() const { return handle_ != kNone; }
    T get() const { return handle_; }
    [[nodiscard]] T release() { return std::exchange(handle_, kNone); }

private:
    T handle_ = kNone;
};

}  // namespace platform
