// The driver's station table, line by line.
#pragma once

#include <stdint.h>

#include <span>
#include <string_view>

#include "platform/records.h"

namespace platform {

// BSS number of a repeater-client link; its bit tells such entries apart.
inline constexpr uint32_t kClientBss = 4096;

// Takes the table's lines in order, headers included, and fills the list up to its last entry.
class StationTable {
public:
    StationTable(station_list& list, std::span<const wireless_conf> bss, int32_t wl_mode)
        : list_(list), bss_(bss), wl_mode_(wl_mode) {}

    bool full() const { return list_.count == STATION_LIST_MAX; }
    void take_line(std::string_view line);

private:
    void take_station(std::string_view line);
    void put_bss(std::string_view column, station_entry& entry) const;

    station_list& list_;
    std::span<const wireless_conf> bss_;
    int32_t wl_mode_;
    int headers_ = 0;
    bool v2_ = false;
};

}  // namespace platform
