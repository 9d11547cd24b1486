#include "src/wireless/station_table.h"

#include <string.h>

#include <algorithm>

#include "src/host/radios.h"
#include "src/support/number.h"
#include "src/support/split.h"
#include "src/support/text.h"
#include "src/support/tokens.h"

namespace platform {
namespace {

constexpr int kHeaderLines = 2;

// "001122aabbcc" as "00-11-22-AA-BB-CC"; of a shorter text the pairs that are whole.
void put_dashed_mac(std::string_view column, char (&mac)[18]) {
    constexpr size_t kPairs = 6;
    const size_t pairs = std::min(kPairs, column.size() / 2);
    char* out = mac;
    for (size_t i = 0; i < 2 * pairs; i += 2) {
        *out++ = upper(column[i]);
        *out++ = upper(column[i + 1]);
        *out++ = '-';
    }
    mac[pairs == 0 ? 0 : 3 * pairs - 1] = '\0';
}

// A best of 0 counts as none yet.
void put_chains(std::string_view column, station_entry& entry) {
    constexpr size_t kColumnLength = 127;
    memset(entry.chain, 0, sizeof entry.chain);
    int32_t best = 0;
    Split pieces({column.data(), std::min(column.size(), kColumnLength)}, '/');
    for (int32_t& chain : entry.chain) {
        const auto piece = pieces.next_filled();
        if (!piece) break;
        chain = leading_decimal(*piece);
        if (best == 0 || best < chain) best = chain;
    }
    entry.chain_best = best;
}

void put_number(Tokens& columns, int32_t& field) {
    if (const auto column = columns.next()) field = leading_decimal(*column);
}

void put_counter(Tokens& columns, uint64_t& field) {
    if (const auto column = columns.next()) field = leading_unsigned(*column);
}

}  // namespace

void StationTable::take_line(std::string_view line) {
    if (headers_ == kHeaderLines) {
        take_station(line);
        return;
    }
    v2_ = has_prefix(line, "V2");  // the second header decides
    ++headers_;
}

void StationTable::take_station(std::string_view line) {
    Tokens columns(line);
    const auto mac = columns.next();
    if (!mac || full()) return;

    station_entry& entry = list_.entries[list_.count++];
    put_dashed_mac(*mac, entry.mac);
    if (const auto bss = columns.next()) put_bss(*bss, entry);
    put_number(columns, entry.column3);
    columns.next();
    columns.next();
    put_number(columns, entry.column6);
    put_number(columns, entry.column7);
    put_number(columns, entry.column8);
    if (!v2_) {
        put_number(columns, entry.column9);
        put_number(columns, entry.column10);
        return;
    }
    put_counter(columns, entry.column9_v2);
    put_counter(columns, entry.column10_v2);
    if (const auto chains = columns.next()) put_chains(*chains, entry);
}

void StationTable::put_bss(std::string_view column, station_entry& entry) const {
    constexpr size_t kSsidLength = 32;
    if (column.starts_with('C')) {
        entry.wl_index = wl_index_of(wl_mode_, kClientBss);
        return;
    }
    const int32_t number = leading_decimal(column);
    entry.wl_index = wl_index_of(wl_mode_, number);
    if (number < 0 || static_cast<size_t>(number) >= bss_.size()) return;
    memcpy(entry.ssid, bss_[static_cast<size_t>(number)].ssid, kSsidLength);
    memset(entry.ssid + kSsidLength, 0, sizeof entry.ssid - kSsidLength);
}

}  // namespace platform
