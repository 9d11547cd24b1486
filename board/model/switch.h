// The Ethernet switch with its PHYs: what the driver's requests and the "switch" command act on.
// It lives in /var/board/switch (one KEY=VALUE a line, values hexadecimal) and its address table
// in /var/board/switch.addresses; both begin with the first use after a start.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "board/model/switch_wiring.h"
#include "board/store/key_file.h"

namespace board {

class Switch {
public:
    Switch();
    void save();  // if anything changed

    // The switch's own registers, up to 0xfffc. Traffic goes on while counters are read.
    uint32_t read_register(uint32_t offset);
    void write_register(uint32_t offset, uint32_t value);
    void clear_counters();

    // Clause-22 registers; 0xffff where no PHY answers. What is advertised counts from the next
    // restart of the negotiation (register 0) on.
    uint16_t read_phy(int port, int reg);
    void write_phy(int port, int reg, uint16_t value);

    // The address table.
    void clear_addresses();
    bool remove_address(std::string_view digits);  // twelve hexadecimal digits; false: not there

    // VLAN, mirror and other settings that nothing but a person reads back.
    std::string setting(std::string_view key) const { return file_.get(key).value_or(""); }
    void set(std::string_view key, std::string_view value);
    void remove_all(std::string_view prefix);  // settings whose key starts so

private:
    struct Link {
        uint16_t common = 0;   // abilities of register 4
        uint16_t gigabit = 0;  // of register 10
        bool up() const { return common != 0 || gigabit != 0; }
        bool half() const;
    };

    const Wiring& wiring() const;  // read at its first use: walks of the address table need little

    uint32_t number(const std::string& key, uint32_t fallback) const;
    void set_number(const std::string& key, uint32_t value);

    Link link(int port) const;
    uint16_t phy(int port, int reg) const;
    uint16_t read_phy_status(int port);
    void restart_negotiation(int port);

    uint32_t read_counter(int port, uint32_t offset);
    bool has_traffic(int port) const;

    void search(uint32_t command);
    uint32_t search_status();

    mutable std::optional<Wiring> wiring_;
    KeyFile file_;
    bool changed_ = false;
};

}  // namespace board
