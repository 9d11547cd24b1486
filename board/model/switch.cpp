// The switch's state, its registers and counters.
#include "board/model/switch.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "board/store/store.h"

namespace board {
namespace {

constexpr const char* kSwitchFile = "switch";

constexpr uint32_t kMacControl = 0x3000;  // of port 0; a port has 0x100
constexpr uint32_t kMacForced = 0x8000;   // the link follows the register's bit 0, not the PHY
constexpr uint32_t kMacDefault = 0x00056330;
constexpr uint32_t kCounters = 0x4000;
constexpr uint32_t kPortRegisters = 0x100;

// What a counter gains with each reading. Bytes are two registers, low and high.
struct Counter {
    uint32_t offset;
    uint32_t gain;
    uint32_t high;  // 0: a counter of packets
};
constexpr Counter kTraffic[] = {
    {0x08, 10,   0   },
    {0x0C, 2,    0   },
    {0x10, 1,    0   },
    {0x48, 7100, 0x4C},
    {0x68, 12,   0   },
    {0x6C, 3,    0   },
    {0x70, 1,    0   },
    {0xA8, 9300, 0xAC},
};
constexpr uint32_t kCollisions = 0x14;

std::string hexadecimal(uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "%x", value);
    return text;
}

std::string register_key(uint32_t offset) {
    return "register." + hexadecimal(offset);
}

std::string counter_key(int port, uint32_t offset) {
    return "counter." + std::to_string(port) + '.' + hexadecimal(offset);
}

bool is_port_register(uint32_t offset, uint32_t base) {
    return offset >= base && offset < base + kSwitchPorts * kPortRegisters;
}

}  // namespace

Switch::Switch() {
    const std::string path = live_path(kSwitchFile);
    if (auto file = KeyFile::load(path)) {
        file_ = std::move(*file);
        return;
    }
    for (const CounterStart& counter : wiring().counters)
        set_number(counter_key(counter.port, counter.offset), counter.value);
    for (int port = 0; port < kPhyPorts; ++port) restart_negotiation(port);
    std::vector<std::string> addresses;
    for (const LearntAddress& address : wiring().stations)
        addresses.push_back(address_line(address));
    replace_lines(live_path("switch.addresses"), addresses);
    save();
}

void Switch::save() {
    if (std::exchange(changed_, false)) file_.save(live_path(kSwitchFile));
}

const Wiring& Switch::wiring() const {
    if (!wiring_) wiring_ = Wiring::load();
    return *wiring_;
}

void Switch::set(std::string_view key, std::string_view value) {
    file_.set(key, value);
    changed_ = true;
}

uint32_t Switch::number(const std::string& key, uint32_t fallback) const {
    const auto value = file_.get(key);
    return value ? static_cast<uint32_t>(std::strtoul(value->c_str(), nullptr, 16)) : fallback;
}

void Switch::set_number(const std::string& key, uint32_t value) {
    set(key, hexadecimal(value));
}

void Switch::remove_all(std::string_view prefix) {
    for (const std::string& line : file_.lines())
        if (line.starts_with(prefix)) file_.remove(line.substr(0, line.find('=')));
    changed_ = true;
}

uint32_t Switch::read_register(uint32_t offset) {
    if (offset == 0x80) return search_status();
    if (is_port_register(offset, kCounters))
        return read_counter(static_cast<int>((offset - kCounters) / kPortRegisters),
                            offset % kPortRegisters);
    const bool mac = is_port_register(offset, kMacControl) && offset % kPortRegisters == 0;
    return number(register_key(offset), mac ? kMacDefault : 0);
}

void Switch::write_register(uint32_t offset, uint32_t value) {
    if (offset == 0x80)
        search(value);
    else if (!is_port_register(offset, kCounters))
        set_number(register_key(offset), value);
}

bool Switch::has_traffic(int port) const {
    const uint32_t offset = kMacControl + static_cast<uint32_t>(port) * kPortRegisters;
    const uint32_t control = number(register_key(offset), kMacDefault);
    return port < kPhyPorts && (control & kMacForced) == 0 && link(port).up();
}

uint32_t Switch::read_counter(int port, uint32_t offset) {
    const std::string key = counter_key(port, offset);
    const uint32_t before = number(key, 0);
    if (!has_traffic(port)) return before;
    uint32_t now = before;
    if (offset == kCollisions && link(port).half()) ++now;
    for (const Counter& counter : kTraffic) {
        if (counter.offset != offset) continue;
        now += counter.gain;
        const std::string high = counter_key(port, counter.high);
        if (counter.high != 0 && now < before) set_number(high, number(high, 0) + 1);
    }
    if (now != before) set_number(key, now);
    return now;
}

void Switch::clear_counters() {
    remove_all("counter.");
}

}  // namespace board
