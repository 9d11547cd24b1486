// The fitted radios and their BSS records, as the host lists them.
#pragma once

#include <stdint.h>
#include <string.h>

#include <algorithm>
#include <span>

#include "src/host/host.h"

namespace platform {

// for (const int32_t wl_mode : RadioList()) walks the host's list in its order, up to the -1.
class RadioList {
public:
    class End {};
    class Iterator {
    public:
        explicit Iterator(const int32_t* at) : at_(at) {}
        int32_t operator*() const { return *at_; }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator!=(End) const { return at_ != nullptr && *at_ != -1; }

    private:
        const int32_t* at_;
    };

    RadioList() : list_(get_wlm_list()) {}
    Iterator begin() const { return Iterator(list_); }
    End end() const { return {}; }

private:
    const int32_t* list_;
};

// Names one BSS: the radio's wl mode in the upper half, the BSS number in the lower.
constexpr uint32_t wl_index_of(int32_t wl_mode, int32_t bss) {
    return (static_cast<uint32_t>(wl_mode) << 16) + static_cast<uint32_t>(bss);
}

// The BSS records of one radio; record 0 also holds the settings of the whole radio. Records
// beyond the configured ones are zero.
class BssSet {
public:
    explicit BssSet(const char* ifname) {
        memset(records_, 0, sizeof records_);
        count_ = std::clamp(read_all_mbss_conf(ifname, records_, PLATFORM_BSS_MAX), 0,
                            int{PLATFORM_BSS_MAX});
    }

    int count() const { return count_; }
    void set_count(int count) { count_ = count; }
    wireless_conf* records() { return records_; }
    wireless_conf& radio() { return records_[0]; }
    const wireless_conf& radio() const { return records_[0]; }
    std::span<const wireless_conf> configured() const {
        return {records_, static_cast<size_t>(count_)};
    }

private:
    wireless_conf records_[PLATFORM_BSS_MAX];
    int count_;
};

}  // namespace platform
