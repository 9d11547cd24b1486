// The switch's address table and the registers through which it is searched.
#include <algorithm>
#include <cctype>
#include <string>

#include "board/model/switch.h"
#include "board/store/store.h"
#include "board/store/words.h"

namespace board {
namespace {

constexpr const char* kAddressFile = "switch.addresses";

// Control register 0x80: commands, then what it answers.
constexpr uint32_t kStart = 0x8000;
constexpr uint32_t kFirst = 4;
constexpr uint32_t kNext = 5;
constexpr uint32_t kBusy = 0x8000;
constexpr uint32_t kEnded = 0x4000;
constexpr uint32_t kPresented = 0x2000;

constexpr uint32_t kNowhere = 0xFFFFFFFF;

uint32_t word(uint8_t first, uint8_t second, uint8_t third, uint8_t fourth) {
    return uint32_t{first} << 24 | uint32_t{second} << 16 | uint32_t{third} << 8 | fourth;
}

// The nth line and whether it is the last one. Looking for it in the text keeps a walk through a
// full table short.
bool find_address(uint32_t number, LearntAddress& address, bool& last) {
    const std::string text = read_text(live_path(kAddressFile)).value_or("");
    size_t start = 0;
    for (; number > 0 && start < text.size(); --number)
        start = std::min(text.find('\n', start), text.size() - 1) + 1;
    const size_t end = text.find('\n', start);
    if (end == std::string::npos) return false;
    last = end + 1 == text.size();
    const auto words = split_words(std::string_view(text).substr(start, end - start));
    return words && parse_address(*words, address);
}

std::string digits_of(std::string_view line) {
    std::string digits;
    for (const char c : line.substr(0, line.find(' ')))
        if (c != ':') digits += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return digits;
}

}  // namespace

void Switch::search(uint32_t command) {
    if ((command & kStart) == 0) return;
    uint32_t cursor = number("search.cursor", kNowhere);
    if ((command & 7) == kFirst)
        cursor = 0;
    else if ((command & 7) == kNext && cursor != kNowhere)
        ++cursor;
    else
        return;
    set_number("search.cursor", cursor);
    set_number("search.busy", cursor % wiring().busy_every == 0 ? wiring().busy_polls : 0);
}

// An address is there to be read once the search is no longer busy.
uint32_t Switch::search_status() {
    const uint32_t cursor = number("search.cursor", kNowhere);
    if (cursor == kNowhere) return 0;
    if (const uint32_t polls = number("search.busy", 0); polls != 0) {
        set_number("search.busy", polls - 1);
        return kBusy;
    }
    LearntAddress address;
    bool last = false;
    if (!find_address(cursor, address, last)) return kEnded;
    const auto& mac = address.mac;
    set_number("register.84", word(mac[0], mac[1], mac[2], mac[3]));
    set_number("register.88", word(mac[4], mac[5], 0, address.age));
    set_number("register.8c", word(address.age, 0, 0, 0) | uint32_t{address.port_map} << 4);
    return last ? kPresented | kEnded : kPresented;
}

void Switch::clear_addresses() {
    replace_lines(live_path(kAddressFile), {});
}

bool Switch::remove_address(std::string_view digits) {
    std::vector<std::string> lines = read_lines(live_path(kAddressFile));
    const auto is_it = [digits](const std::string& line) { return digits_of(line) == digits; };
    if (std::erase_if(lines, is_it) == 0) return false;
    return replace_lines(live_path(kAddressFile), lines);
}

}  // namespace board
