// A board with a switch behind eth0: registers that answer, PHYs that answer, an address table.
#pragma once

#include <linux/if.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "board/store/journal.h"
#include "platform/switch.h"
#include "tests/support/board.h"

namespace harness {

inline std::string hexadecimal(uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "%x", number);
    return text;
}

// The switch's address table and the registers that search it.
struct AddressTable {
    struct Row {
        uint32_t high, low, attributes;
        int busy = 0;  // polls before it is presented
    };
    std::vector<Row> rows;
    bool end_with_last = false;  // the last entry carries the end; otherwise a poll of its own
    bool never_ends = false;     // goes round
    size_t place = 0;
    int polls = 0;

    uint32_t status() {
        if (place >= rows.size()) return 0x4000;
        // A busy entry shows its "presented" bit already.
        if (polls++ < rows[place].busy) return 0xA000;
        return end_with_last && place + 1 == rows.size() ? 0x6000 : 0x2000;
    }
    uint32_t read(uint32_t offset) {
        if (offset == 0x80) return status();
        const Row& row = rows.at(place);
        return offset == 0x84 ? row.high : offset == 0x88 ? row.low : row.attributes;
    }
    void control(uint32_t value) {
        place = value == 0x8004 ? 0 : place + 1;
        if (never_ends && place == rows.size()) place = 0;
        polls = 0;
    }
};

class SwitchBoard : public Board {
protected:
    SwitchBoard() {
        journal_sockets = true;
        on_ioctl[0x89F3] = [this](void* request) { return exchange(request, false); };
        on_ioctl[0x89F4] = [this](void* request) { return exchange(request, true); };
        on_command = [this](const std::string& command) { return phy_answer("$< " + command); };
    }

    std::map<uint32_t, uint32_t> registers;
    AddressTable table;
    bool journal_registers = true;  // "reg 80" a reading, "reg 80 8004" a writing

    // What the tool prints for a PHY register: value after value, then the last again.
    std::map<std::string, std::vector<int>> phys;
    static std::string phy_read(int port, int reg) {
        return "$< switch phy cl22 r " + std::to_string(port) + ' ' + std::to_string(reg);
    }
    static Lines under_lock(Lines lines) {
        lines.insert(lines.begin(), "lock switch");
        lines.push_back("unlock switch");
        return lines;
    }

private:
    Answer phy_answer(const std::string& command) {
        const auto row = phys.find(command);
        if (row == phys.end()) return {};
        const int value = row->second.front();
        if (row->second.size() > 1) row->second.erase(row->second.begin());
        return "Phy read reg=0x1, value=0x" + hexadecimal(static_cast<uint32_t>(value)) + "\n";
    }

    int exchange(void* record, bool writes) {
        const auto* const request = static_cast<ifreq*>(record);
        auto* const words = reinterpret_cast<uint32_t*>(request->ifr_data);
        const uint32_t offset = words[1];
        EXPECT_STREQ("eth0", request->ifr_name);
        EXPECT_EQ(31u, words[0]);
        const bool searches = offset >= 0x80 && offset <= 0x8C;
        if (journal_registers && writes)
            board::journal({"reg", hexadecimal(offset), hexadecimal(words[2])});
        if (journal_registers && !writes) board::journal({"reg", hexadecimal(offset)});
        if (writes && searches) table.control(words[2]);
        if (writes) registers[offset] = words[2];
        if (!writes) words[3] = searches ? table.read(offset) : registers[offset];
        return 0;
    }
};

}  // namespace harness
