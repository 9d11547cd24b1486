#include "board/host/state_file.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <span>

#include "board/host/fields.h"
#include "board/host/limits.h"
#include "board/store/journal.h"
#include "board/store/store.h"
#include "board/store/words.h"
#include "src/host/host.h"

namespace board {
namespace {

using Words = std::span<const std::string>;
using Fields = std::map<std::string, Field>;

constexpr const char* kAnyCountry = "*";
constexpr const char* kEmptyTable = "-";

bool load_wan(State& target, Words words) {
    if (words.size() != 2) return false;
    target.wan_types[words[0]] = words[1];
    return true;
}

bool load_mac_filter(State& target, Words words) {
    if (words.size() != 4) return false;
    const auto wl_mode = to_number<uint32_t>(words[0]);
    const auto bss = to_number<uint32_t>(words[1]);
    if (!wl_mode || !bss) return false;
    MacFilter& filter = target.mac_filters[*wl_mode << 16 | *bss];
    if (words[2] == "entry" || words[2] == "inactive_entry") {
        mac_filter_entry entry{};
        if (strtomac(words[3].c_str(), entry.mac) != 0) return false;
        entry.inactive = words[2] != "entry";
        filter.entries.push_back(entry);
        return true;
    }
    const auto policy = to_number<int>(words[3]);
    if (words[2] != "policy" || !policy) return false;
    filter.policy = *policy;
    return true;
}

// "10:20", the two bytes of a calibration entry.
std::optional<regulated_eeprom_entry> eeprom_entry(const std::string& word) {
    const size_t colon = std::min(word.find(':'), word.size());
    const auto first = to_number<int32_t>(word.substr(0, colon), 16);
    const auto second = to_number<int32_t>(word.substr(std::min(colon + 1, word.size())), 16);
    if (!first || !second) return std::nullopt;
    return regulated_eeprom_entry{1, *first, *second};
}

bool load_calibration(Regulation& row, Words words) {
    if (words.empty()) return true;
    auto& table = row.eeprom.emplace();
    if (words.size() == 1 && words[0] == kEmptyTable) return true;
    if (words.size() > table.size()) return false;
    for (size_t i = 0; i < words.size(); ++i) {
        const auto entry = eeprom_entry(words[i]);
        if (!entry) return false;
        table[i] = *entry;
    }
    return true;
}

bool load_regulation(State& target, Words words) {
    if (words.size() < 4) return false;
    const auto channel = to_number<int>(words[1]);
    const auto bandwidth = to_number<int>(words[2]);
    const auto power = to_number<int>(words[3]);
    if (!channel || !bandwidth || !power) return false;
    Regulation row{words[0] == kAnyCountry ? "" : words[0], *channel, *bandwidth, *power, {}};
    if (!load_calibration(row, words.subspan(4))) return false;
    target.regulations.push_back(std::move(row));
    return true;
}

bool load_port(State& target, Words words) {
    const auto user_port = words.size() == 4 ? to_number<int>(words[0]) : std::nullopt;
    if (user_port) target.port_settings[*user_port] = {words[1], words[2], words[3]};
    return user_port.has_value();
}

constexpr struct {
    std::string_view name;
    bool (*load)(State& target, Words words);
} kTables[] = {
    {"mac_filter", load_mac_filter},
    {"port",       load_port      },
    {"regulation", load_regulation},
    {"wan",        load_wan       },
};

// The line's words, read for a state. A field's name is as many words as make a known one.
class LineReader {
public:
    LineReader(State& target, Limits limits) : target_(target), limits_(limits) {
        for (Field& field : fields_of(target)) fields_.emplace(field.name, field);
    }

    bool take(Words words) {
        for (const auto& table : kTables)
            if (table.name == words[0])
                return fits(words[0], words.subspan(1)) && table.load(target_, words.subspan(1));
        std::string name;
        for (size_t i = 0; i < words.size(); ++i) {
            name += (i == 0 ? "" : " ") + words[i];
            const auto field = fields_.find(name);
            if (field != fields_.end())
                return fits(name, words.subspan(i + 1)) &&
                       set_field(field->second, words.subspan(i + 1));
        }
        return false;
    }

private:
    bool fits(std::string_view name, Words words) const {
        return limits_ == Limits::none || is_within_limits(name, words);
    }

    State& target_;
    const Limits limits_;
    Fields fields_;
};

class Writer {
public:
    explicit Writer(const std::string& path) : file_(path) {}

    void line(const std::string& start, const std::vector<std::string>& words) {
        file_ << start;
        for (const std::string& word : words) file_ << ' ' << quote(word);
        file_ << '\n';
    }
    bool done() { return static_cast<bool>(file_.flush()); }

private:
    std::ofstream file_;
};

void save_fields(Writer& writer, State source) {
    State factory = factory_state();
    const auto before = fields_of(factory);
    const auto now = fields_of(source);
    for (size_t i = 0; i < now.size(); ++i) {
        const auto value = field_value(now[i]);
        if (value != field_value(before[i])) writer.line(now[i].name, value);
    }
}

void save_mac_filter(Writer& writer, uint32_t wl_index, const MacFilter& filter) {
    const std::string start =
        "mac_filter " + std::to_string(wl_index >> 16) + ' ' + std::to_string(wl_index & 0xffff);
    writer.line(start + " policy", {std::to_string(filter.policy)});
    for (const mac_filter_entry& entry : filter.entries) {
        char mac[18];
        mactostr(entry.mac, mac, sizeof mac);
        writer.line(start + (entry.inactive == 0 ? " entry" : " inactive_entry"), {mac});
    }
}

void save_regulation(Writer& writer, const Regulation& row) {
    std::vector<std::string> words = {
        row.country.empty() ? kAnyCountry : row.country, std::to_string(row.channel),
        std::to_string(row.bandwidth_mhz), std::to_string(row.power_percent)};
    const size_t before = words.size();
    for (const regulated_eeprom_entry& entry :
         row.eeprom.value_or(decltype(row.eeprom)::value_type{})) {
        char bytes[24];
        std::snprintf(bytes, sizeof bytes, "%02x:%02x", static_cast<unsigned>(entry.first),
                      static_cast<unsigned>(entry.second));
        if (entry.in_use != 0) words.push_back(bytes);
    }
    if (row.eeprom && words.size() == before) words.push_back(kEmptyTable);
    writer.line("regulation", words);
}

}  // namespace

Complaints load_state(State& target, const std::string& path, Limits limits) {
    std::ifstream file(path);
    if (!file) return {"cannot read " + path};
    const std::string text(std::istreambuf_iterator<char>(file), {});
    LineReader reader(target, limits);
    const auto take = [&reader](Words words) { return reader.take(words); };
    return read_configuration(path, split_lines(text), take, LineForm::words);
}

bool save_state(const State& source, const std::string& path) {
    Writer writer(path);
    save_fields(writer, source);
    for (const auto& [name, type] : source.wan_types) writer.line("wan", {name, type});
    for (const auto& [wl_index, filter] : source.mac_filters)
        save_mac_filter(writer, wl_index, filter);
    for (const Regulation& row : source.regulations) save_regulation(writer, row);
    for (const auto& [port, setting] : source.port_settings)
        writer.line("port", {std::to_string(port), setting.mode, setting.speed, setting.duplex});
    return writer.done();
}

}  // namespace board
