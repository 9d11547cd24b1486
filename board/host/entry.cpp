// What a program that loads this library on the board says to it, since it has no State of its
// own: C functions beside the host's.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

#include "board/host/entry.h"
#include "board/host/fields.h"
#include "board/host/state_file.h"
#include "board/model/modules.h"
#include "board/model/neighbours.h"
#include "board/model/pins.h"
#include "board/model/stations.h"
#include "board/model/switch_wiring.h"
#include "board/model/wps_run.h"
#include "board/store/journal.h"
#include "board/store/store.h"
#include "board/store/words.h"
#include "src/host/host.h"

namespace {

using board::State;
using Lines = std::vector<std::string>;

constexpr const char* kScratch = "/tmp/board.conf.new";
constexpr const char* kTables[] = {"mac_filter", "port", "regulation", "wan"};

// The state as the file had it.
State& loaded() {
    static State* const before = new State;
    return *before;
}

// Every configuration file of the board.
board::Complaints complaints() {
    board::State scratch = board::factory_state();
    board::ModuleFaults modules;
    std::vector<board::Neighbour> neighbours;
    std::vector<board::WiredPin> pins;
    board::StationFile stations;
    board::Wiring wiring;
    std::vector<board::WpsPeerText> peer;
    board::Complaints all;
    for (const board::Complaints& some :
         {board::load_state(scratch, board::in_tree("/etc/board.conf"), board::Limits::board),
          board::load_module_faults(modules), board::load_neighbours(neighbours),
          board::load_wired_pins(pins), board::load_station_file(stations),
          board::load_wiring(wiring), board::load_wps_peer(peer)})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

bool starts_with(const std::string& line, const std::string& name) {
    const auto words = board::split_words(line).value_or(Lines{});
    std::string start;
    for (const std::string& word : words) {
        start += (start.empty() ? "" : " ") + word;
        if (start == name) return true;
    }
    return false;
}

std::string line_of(const board::Field& field) {
    std::string line = field.name;
    for (const std::string& word : board::field_value(field)) line += ' ' + board::quote(word);
    return line;
}

void replace_field(Lines& lines, const board::Field& field) {
    const auto is_its = [&](const std::string& line) { return starts_with(line, field.name); };
    const auto place = std::find_if(lines.begin(), lines.end(), is_its);
    if (place == lines.end())
        lines.push_back(line_of(field));
    else
        *place = line_of(field);
}

Lines table_lines(const State& source, const char* table) {
    board::save_state(source, board::in_tree(kScratch));
    Lines lines = board::read_lines(kScratch);
    std::erase_if(lines, [table](const std::string& line) { return !starts_with(line, table); });
    return lines;
}

void replace_table(Lines& lines, const char* table) {
    const Lines now = table_lines(board::state(), table);
    if (now == table_lines(loaded(), table)) return;
    std::erase_if(lines, [table](const std::string& line) { return starts_with(line, table); });
    lines.insert(lines.end(), now.begin(), now.end());
}

}  // namespace

extern "C" {

int board_check_configuration(const char* directory, void (*complain)(const char* text)) {
    board::set_root(directory);
    const board::Complaints found = complaints();
    board::set_root("");
    for (const std::string& complaint : found) complain(complaint.c_str());
    return found.empty() ? 0 : -1;
}

int board_load_state(const char* path) {
    board::set_root("");
    const auto found = board::load_state(board::state(), path, board::Limits::board);
    for (const std::string& complaint : found)
        std::fprintf(stderr, "board: %s\n", complaint.c_str());
    loaded() = board::state();
    return found.empty() ? 0 : -1;
}

int board_set_state(const char* line) {
    std::ofstream(kScratch) << line << '\n';
    return board::load_state(board::state(), kScratch, board::Limits::board).empty() ? 0 : -1;
}

int board_set_mac_filter(uint32_t wl_index, int policy, const char* addresses) {
    board::MacFilter filter{policy, {}};
    std::istringstream words(addresses);
    for (std::string word; words >> word;) {
        mac_filter_entry entry{};
        if (strtomac(word.c_str(), entry.mac) != 0) return -1;
        filter.entries.push_back(entry);
    }
    board::state().mac_filters[wl_index] = filter;
    return 0;
}

int board_save_state(const char* path) {
    const auto before = board::fields_of(loaded());
    const auto now = board::fields_of(board::state());
    Lines lines = board::read_lines(path);
    const Lines old_lines = lines;
    for (size_t i = 0; i < now.size(); ++i)
        if (board::field_value(now[i]) != board::field_value(before[i]))
            replace_field(lines, now[i]);
    for (const char* table : kTables) replace_table(lines, table);
    if (lines == old_lines) return 0;
    loaded() = board::state();
    return board::replace_lines(path, lines) ? 0 : -1;
}

}  // extern "C"
