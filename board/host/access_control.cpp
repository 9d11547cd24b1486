// MAC filters and 802.1X.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>

#include "board/host/radio.h"
#include "board/store/journal.h"
#include "board/store/store.h"
#include "src/host/host.h"

using board::state;

namespace {

bool any_uses_8021x(std::span<const wireless_conf> records) {
    return std::any_of(records.begin(), records.end(), board::uses_8021x);
}

const board::MacFilter& filter_of(uint32_t wl_index) {
    static const auto* const none = new board::MacFilter;
    const auto filter = state().mac_filters.find(wl_index);
    return filter == state().mac_filters.end() ? *none : filter->second;
}

// Lets the answers of a network's RADIUS server in.
std::string radius_rule(const wireless_conf& record) {
    constexpr int kRadiusPort = 1812;
    const std::string server(record.radius_server,
                             strnlen(record.radius_server, sizeof record.radius_server));
    const int port = record.radius_port != 0 ? record.radius_port : kRadiusPort;
    return " -s " + server + " -p udp --sport " + std::to_string(port) + " -j ACCEPT";
}

}  // namespace

extern "C" {

int macauth_get_policy(uint32_t wl_index) {
    return filter_of(wl_index).policy;
}

// The table comes from malloc() with no byte to spare, so that a sanitizer sees a read past it.
mac_filter_table* macdb_read(uint32_t wl_index, int max) {
    const auto& entries = filter_of(wl_index).entries;
    const size_t count = std::min(entries.size(), static_cast<size_t>(std::max(max, 0)));
    const size_t size = count * sizeof(mac_filter_entry);
    auto* const table =
        static_cast<mac_filter_table*>(std::malloc(sizeof(mac_filter_table) + size));
    if (table == nullptr) return nullptr;
    table->count = static_cast<int32_t>(count);
    table->reserved = 0;
    if (size != 0) std::memcpy(table + 1, entries.data(), size);
    ++state().open_mac_tables;
    return table;
}

void macdb_free(mac_filter_table* table) {
    if (table == nullptr) return;
    std::free(table);
    --state().open_mac_tables;
}

int wireless_check_8021x_enabled(const wireless_conf* record) {
    return board::uses_8021x(*record);
}

int wireless_check_8021x_enabled2(int wl_mode) {
    const board::Radio* const radio = board::find_radio(wl_mode);
    if (radio == nullptr) return 0;
    return any_uses_8021x(std::span(radio->bss).first(static_cast<size_t>(radio->bss_count)));
}

int wireless_check_8021x_enable_for_band(const char*, const wireless_conf* records, int count) {
    return any_uses_8021x({records, static_cast<size_t>(count)});
}

int wireless_set_radius_iptables(const char* ifname, const wireless_conf* records, int count) {
    board::journal({"wireless_set_radius_iptables", ifname, std::to_string(count)});
    const std::string path = board::live_path("iptables");
    const std::string chain = "filter RADIUS_" + std::string(ifname);
    auto rules = board::read_lines(path);
    std::erase_if(rules, [&](const std::string& rule) { return rule.starts_with(chain + ' '); });
    for (const wireless_conf& record : std::span(records, static_cast<size_t>(count)))
        if (board::uses_8021x(record)) rules.push_back(chain + radius_rule(record));
    return board::replace_lines(path, rules) ? 0 : -1;
}

}  // extern "C"
