// A board with a switch behind eth0: registers that answer, PHYs that answer, an address table.
#pragma once

#include <net/if.h>

#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "live/journal.h"
#include "platform/switch.h"
#include "support/board.h"

namespace harness {

inline std::string hexadecimal(uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "%x", number);
    return text;
}

// The switch's address table and the registers that search it.
class AddressTable {
public:
    struct Row {
        uint32_t high, low, attributes;
        int busy = 0;  // polls before it is presented
    };

    static Row learnt(const uint8_t (&mac)[6], uint32_t port_map, uint32_t age = 0xFF) {
        const auto at = [&mac](size_t i, int shift) { return uint32_t{mac[i]} << shift; };
        return {at(0, 24) | at(1, 16) | at(2, 8) | at(3, 0), at(4, 24) | at(5, 16) | 0xA5,
                age << 24 | port_map << 4};
    }

    std::vector<Row> rows;
    bool end_with_last = false;  // the last entry carries the end; otherwise a poll of its own
    bool never_ends = false;     // goes round
    bool never_presents = false;

    uint32_t read(uint32_t offset) {
        if (offset == 0x80) return status();
        const Row& row = rows.at(place_);
        return offset == 0x84 ? row.high : offset == 0x88 ? row.low : row.attributes;
    }
    void control(uint32_t value) {
        place_ = value == 0x8004 ? 0 : place_ + 1;
        if (never_ends && place_ == rows.size()) place_ = 0;
        polls_ = 0;
    }

private:
    uint32_t status() {
        if (never_presents) return 0x8000;
        if (place_ >= rows.size()) return 0x4000;
        // A busy entry shows its "presented" bit already.
        if (polls_++ < rows[place_].busy) return 0xA000;
        return end_with_last && place_ + 1 == rows.size() ? 0x6000 : 0x2000;
    }

    size_t place_ = 0;
    int polls_ = 0;
};

class SwitchBoard : public Board {
protected:
    SwitchBoard() {
        journal_sockets = true;
        on_ioctl[0x89F3] = [this](void* request) { return exchange(request, false); };
        on_ioctl[0x89F4] = [this](void* request) { return exchange(request, true); };
    }

    std::map<uint32_t, uint32_t> registers;
    AddressTable table;
    bool journal_registers = true;  // "reg 80" a reading, "reg 80 8004" a writing
    std::vector<uint32_t> last_request;
    std::string last_interface;

    // What the tool prints for a PHY register: value after value, then the last again.
    void phy(int port, int reg, const std::vector<int>& values) {
        phys_[phy_read(port, reg)] = values;
        on_command = [this](const std::string& command) { return phy_answer("$< " + command); };
    }
    static std::string phy_read(int port, int reg) {
        return "$< switch phy cl22 r " + std::to_string(port) + ' ' + std::to_string(reg);
    }
    static std::string phy_write(int port, int reg, int value) {
        return "$2 switch phy cl22 w " + std::to_string(port) + ' ' + std::to_string(reg) + ' ' +
               std::to_string(value);
    }
    static Lines under_lock(Lines lines) {
        lines.insert(lines.begin(), "lock switch");
        lines.push_back("unlock switch");
        return lines;
    }

private:
    Answer phy_answer(const std::string& command) {
        const auto row = phys_.find(command);
        if (row == phys_.end()) return {};
        const int value = row->second.front();
        if (row->second.size() > 1) row->second.erase(row->second.begin());
        return "Phy read reg=0x1, value=0x" + hexadecimal(static_cast<uint32_t>(value)) + "\n";
    }

    int exchange(void* record, bool writes) {
        auto* const request = static_cast<ifreq*>(record);
        uint32_t words[8];
        std::memcpy(words, request->ifr_data, sizeof words);
        last_interface = request->ifr_name;
        last_request.assign(words, words + 4);
        const uint32_t offset = words[1];
        const bool searches = offset >= 0x80 && offset <= 0x8C;
        if (journal_registers && writes)
            board::journal({"reg", hexadecimal(offset), hexadecimal(words[2])});
        if (journal_registers && !writes) board::journal({"reg", hexadecimal(offset)});
        if (writes && searches) table.control(words[2]);
        if (writes) registers[offset] = words[2];
        if (!writes) words[3] = searches ? table.read(offset) : registers[offset];
        std::memcpy(request->ifr_data, words, sizeof words);
        return 0;
    }

    std::map<std::string, std::vector<int>> phys_;
};

}  // namespace harness
