// What only the virtual board has: its journal, its configuration, its checks.
#include <algorithm>

#include "board/host/entry.h"
#include "board/store/journal.h"
#include "board/store/store.h"
#include "boardctl/nearest.h"
#include "boardctl/verb.h"
#include "boardctl/verbs/checks.h"
#include "boardctl/virtual_board.h"

namespace boardctl {
namespace {

Outcome journal(Session& session, const Arguments& arguments) {
    session.require_virtual("a journal");
    auto lines = board::journal_lines();
    if (arguments.has("--clear")) board::clear_journal();
    if (arguments.has("--last")) {
        const auto last = static_cast<size_t>(arguments.number("--last", 0));
        if (last < lines.size())
            lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(last));
    }
    // Its words are quoted as in C already.
    return {Json(lines), kGood, true};
}

Outcome show_config(Session& session, const Arguments&) {
    session.require_virtual("its configuration");
    return {Json(board::read_lines(kBoardConfiguration)), kGood, true};
}

Outcome set_config(Session& session, const Arguments& arguments) {
    session.require_virtual("its configuration for change");
    const auto words = arguments.texts(kRest);
    std::string line;
    // The field may be one argument or several; the last one is the value, whatever it holds.
    for (size_t i = 0; i < words.size(); ++i)
        line += i + 1 < words.size() ? words[i] + ' ' : board::quote(words[i]);
    if (line.empty() || HOST_CALL(session.library, board_set_state)(line.c_str()) != 0)
        throw UsageError("not understood: " + line + "; FIELD ... VALUE as in " +
                         kBoardConfiguration + ", with a value in its range");
    return {{{"set", line}}};
}

// Some hold only at times, or change what they look at: they are checked when they are named.
struct Area {
    const char* name;
    Faults (*check)(Session& session);
    bool is_usual;
};

constexpr Area kAreas[] = {
    {"calibration", check_calibration, true},
    {"modules", check_modules, true},
    {"pins", check_pins, true},
    {"bridge", check_bridge, true},
    {"networks", check_networks, true},
    {"profiles", check_profiles, true},
    {"radios", check_radios, true},
    {"stations", check_stations, true},
    {"survey", check_survey, true},
    {"access", check_access, true},
    {"vlan", check_vlans, true},
    {"mirror", check_mirror, true},
    {"ports", check_ports, true},
    {"wired", check_wired, true},
    {"leds", check_leds, true},
    {"buttons", check_buttons, true},
    {"helper", check_helper, false},
    {"counters", check_counters, false},
    {"wps", check_wps, false},
};

std::string no_area(const std::string& name) {
    std::vector<std::string> names;
    for (const Area& area : kAreas) names.emplace_back(area.name);
    return "unknown area '" + name + '\'' + suggestion(name, names) + "; AREA is " +
           alternatives(names);
}

std::vector<Area> named_areas(const Arguments& arguments) {
    const auto names = arguments.texts("AREA");
    std::vector<Area> areas;
    for (const Area& area : kAreas)
        if (names.empty() && area.is_usual) areas.push_back(area);
    for (const std::string& name : names) {
        const auto* const area = std::find_if(std::begin(kAreas), std::end(kAreas),
                                              [&](const Area& each) { return name == each.name; });
        if (area == std::end(kAreas)) throw UsageError(no_area(name));
        areas.push_back(*area);
    }
    return areas;
}

// An answer that the board fails to give is a fault, too, and the other areas are still checked.
Faults faults_of(const Area& area, Session& session) {
    try {
        return area.check(session);
    } catch (const Failed& failure) {
        return {failure.what()};
    }
}

Outcome check(Session& session, const Arguments& arguments) {
    session.require_virtual("checks against what it has");
    Outcome outcome;
    Json& rows = outcome.value["areas"] = Json::array();
    Json faults = Json::array();
    for (const Area& area : named_areas(arguments)) {
        session.progress(std::string("checking ") + area.name);
        const Faults found = faults_of(area, session);
        rows.push_back({{"area", area.name}, {"state", found.empty() ? "good" : "wrong"}});
        for (const std::string& fault : found) faults.push_back(fault);
    }
    if (!faults.empty()) outcome.status = kFailed;
    outcome.value["faults"] = faults;
    return outcome;
}

constexpr Option kJournalOptions[] = {
    {"--last", Kind::number, "only so many", {0}},
    {"--clear", Kind::flag, "begin a new one"},
};
constexpr Option kSetConfigOptions[] = {
    {kRest, Kind::rest, "field and value"},
};
constexpr Option kCheckOptions[] = {
    {"AREA", Kind::texts, "only these; helper, counters and wps are checked when named"},
};

}  // namespace

std::span<const Verb> board_verbs() {
    static const Verb kVerbs[] = {
        {"journal", "", "Every effect on the virtual board since its start, in order.",
         "  boardctl journal --last 20\n  boardctl journal --clear", journal, kJournalOptions},
        {"config",
         "show",
         "The host's configuration on the virtual board.",
         "  boardctl config",
         show_config,
         {},
         true},
        {"config", "set", "Changes a field of it; what uses it is told by another call.",
         "  boardctl config set radio 1 bss 1 ssid \"my net\"\n  boardctl config set set easymesh "
         "1",
         set_config, kSetConfigOptions},
        {"check", "", "Compares what the library tells and did with what the virtual board has.",
         "  boardctl check\n  boardctl check stations survey", check, kCheckOptions},
    };
    return kVerbs;
}

}  // namespace boardctl
