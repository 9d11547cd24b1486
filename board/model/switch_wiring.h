// What is plugged into the Ethernet ports, from /etc/switch.conf:
//
//     port 0 1000/full 100/full 10/full    # what the partner offers; a port not named has no cable
//     station 02:00:5e:10:00:01 0 149      # address, switch ports ("0" or "0,2"), age; 0: aged out
//     counter 0 ac 1                       # port, counter offset, value at power-up; hexadecimal
//     negotiation 1                        # polls of the PHY's status until a link is agreed
//     busy 2 16                            # polls that a search of the address table takes, at its
//                                          # start and then before every 16th address
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "board/store/configuration.h"

namespace board {

inline constexpr int kSwitchPorts = 7;  // 5 and 6 lead to the processor and have no PHY
inline constexpr int kPhyPorts = 5;
inline constexpr size_t kAddressTable = 2048;  // addresses that the switch remembers

// Abilities as the clause-22 registers 5 and 10 show them.
struct LinkPartner {
    uint16_t abilities = 0;
    uint16_t gigabit = 0;
};

struct LearntAddress {
    std::array<uint8_t, 6> mac{};
    uint8_t port_map = 0;
    uint8_t age = 0;
};

struct CounterStart {
    int port = 0;
    uint32_t offset = 0;
    uint32_t value = 0;
};

struct Wiring {
    std::array<LinkPartner, kSwitchPorts> partners{};
    std::vector<CounterStart> counters;
    uint32_t negotiation_polls = 0;
    uint32_t busy_polls = 0;
    uint32_t busy_every = kAddressTable;
    std::vector<LearntAddress> stations;  // that a switch knows when it starts

    static Wiring load();
};
Complaints load_wiring(Wiring& wiring);

// An address as the words of a "station" line, and back; false for words that are none.
std::string address_line(const LearntAddress& address);
bool parse_address(std::span<const std::string> words, LearntAddress& address);

}  // namespace board
