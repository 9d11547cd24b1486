#include "board/model/pins.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "board/store/store.h"
#include "board/store/words.h"

namespace board {
namespace {

constexpr size_t kHeadLines = 2;
constexpr size_t kPinColumns = 9;

// A pin's numbers; the first four are those of PinColumn.
struct Pin {
    int number = -1;
    std::array<int, kPinColumns> values{};
    int& operator[](PinColumn column) { return values[static_cast<size_t>(column)]; }
};

std::string line_of(const Pin& pin) {
    char head[16];
    std::snprintf(head, sizeof head, "%3d:", pin.number);
    std::string line = head;
    for (const int value : pin.values) line += ' ' + std::to_string(value);
    return line;
}

std::optional<Pin> parse_pin(const std::string& line) {
    std::istringstream words(line);
    Pin pin;
    char colon = '\0';
    if (!(words >> pin.number >> colon) || colon != ':') return std::nullopt;
    for (int& value : pin.values)
        if (!(words >> value)) return std::nullopt;
    return pin;
}

// The pin's line, changed; false without such a pin.
template <class Change>
bool change_pin(int number, const Change& change) {
    std::vector<std::string> lines = read_lines(kPinFile);
    for (size_t i = kHeadLines; i < lines.size(); ++i) {
        auto pin = parse_pin(lines[i]);
        if (!pin || pin->number != number) continue;
        change(*pin);
        lines[i] = line_of(*pin);
        return replace_lines(kPinFile, lines);
    }
    return false;
}

}  // namespace

Complaints load_wired_pins(std::vector<WiredPin>& pins) {
    constexpr int kLastPin = 102;
    const auto take = [&pins](std::span<const std::string> words) {
        const auto number = number_within(words[0], 0, kLastPin);
        const auto level = words.size() > 1 ? number_within(words[1], 0, 1) : std::nullopt;
        if (!number || !level) return false;
        pins.push_back({*number, *level});
        return true;
    };
    return read_configuration("/etc/pins.conf", take);
}

void make_pin_file() {
    std::vector<std::string> lines = {"MT7622 pins",
                                      "PIN: MODE DIR DOUT DIN PULL_EN PULL_SEL IES SMT DRIVE"};
    std::vector<WiredPin> pins;
    load_wired_pins(pins);
    for (const auto& [number, level] : pins)
        lines.push_back(line_of({
            number, {0, 0, 0, level, 1, 1, 1, 0, 8}
        }));
    const std::string path = kPinFile;
    make_directories(path.substr(0, path.rfind('/')));
    replace_lines(path, lines);
}

bool has_pins() {
    return read_lines(kPinFile).size() > kHeadLines;
}

bool write_pin_command(std::string_view command) {
    std::istringstream words{std::string(command)};
    std::string word;
    int number = 0;
    int value = 0;
    if (!(words >> word >> number >> value) || (word != "mode" && word != "out")) return false;
    if (word == "out") return set_pin_output(number, value);
    return change_pin(number, [value](Pin& pin) { pin[PinColumn::function] = value; });
}

bool set_pin_output(int number, int level) {
    return change_pin(number, [level](Pin& pin) {
        pin[PinColumn::is_output] = 1;
        pin[PinColumn::output] = level;
        pin[PinColumn::input] = level;  // the pin follows what drives it
    });
}

bool set_pin_input(int number, int level) {
    return change_pin(number, [level](Pin& pin) { pin[PinColumn::input] = level; });
}

int pin_value(int number, PinColumn column) {
    for (const std::string& line : read_lines(kPinFile))
        if (auto pin = parse_pin(line); pin && pin->number == number) return (*pin)[column];
    return -1;
}

}  // namespace board
