// What only the virtual board has: its journal, its configuration, its checks.
#include <algorithm>

#include "board/store/journal.h"
#include "board/store/store.h"
#include "boardctl/checks/checks.h"
#include "boardctl/nearest.h"
#include "boardctl/verb.h"

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
    if (line.empty() || !session.store(line))
        throw UsageError("not understood: " + line + "; FIELD ... VALUE as in " +
                         kBoardConfiguration + ", with a value in its range");
    return {{{"set", line}}};
}

// Some hold only at times, or change what they look at: they are checked when they are named.
struct Area {
    const char* name;
    Check* check;
    bool is_usual = true;
};

constexpr Area kAreas[] = {
    {"calibration", check_calibration},
    {"modules", check_modules},
    {"pins", check_pins},
    {"bridge", check_bridge},
    {"networks", check_networks},
    {"profiles", check_profiles},
    {"radios", check_radios},
    {"stations", check_stations},
    {"survey", check_survey},
    {"access", check_access},
    {"vlan", check_vlans},
    {"mirror", check_mirror},
    {"ports", check_ports},
    {"wired", check_wired},
    {"leds", check_leds},
    {"buttons", check_buttons},
    {"helper", check_helper, false},
    {"counters", check_counters, false},
    {"wps", check_wps, false},
};

std::vector<Area> named_areas(const Arguments& arguments) {
    std::vector<Area> areas;
    std::vector<std::string> known;
    for (const Area& area : kAreas) known.emplace_back(area.name);
    if (!arguments.has("AREA"))
        std::copy_if(std::begin(kAreas), std::end(kAreas), std::back_inserter(areas),
                     [](const Area& area) { return area.is_usual; });
    for (const std::string& name : arguments.texts("AREA")) {
        const auto place = std::find(known.begin(), known.end(), name);
        if (place == known.end())
            throw UsageError("unknown area '" + name + '\'' + suggestion(name, known) +
                             "; AREA is " + alternatives(known));
        areas.push_back(kAreas[place - known.begin()]);
    }
    return areas;
}

// An answer that the board fails to give is a fault, too, and the other areas are still checked.
std::vector<std::string> faults_of(const Area& area, Session& session) {
    Faults faults;
    try {
        area.check(session, faults);
    } catch (const Failed& failure) {
        return {failure.what()};
    }
    return faults.texts;
}

Outcome check(Session& session, const Arguments& arguments) {
    session.require_virtual("checks against what it has");
    Outcome outcome;
    Json& rows = outcome.value["areas"] = Json::array();
    Json faults = Json::array();
    for (const Area& area : named_areas(arguments)) {
        session.progress(std::string("checking ") + area.name);
        const auto found = faults_of(area, session);
        rows.push_back({{"area", area.name}, {"state", found.empty() ? "good" : "wrong"}});
        for (const std::string& fault : found) faults.push_back(fault);
    }
    if (!faults.empty()) outcome.status = kFailed;
    outcome.value["faults"] = faults;
    return outcome;
}

}  // namespace

Verbs board_verbs() {
    return {
        Verb("journal", "Every effect on the virtual board since its start, in order.",
             "journal --last 20\njournal --clear", journal,
             {{"--last", Kind::number, "only so many", Range{0}},
              {"--clear", Kind::flag, "begin a new one"}}),
        Verb("config show*", "The host's configuration on the virtual board.", "config",
             show_config),
        Verb("config set", "Changes a field of it; what uses it is told by another call.",
             "config set radio 1 bss 1 ssid \"my net\"\nconfig set set easymesh 1", set_config,
             {{kRest, Kind::rest, "field and value"}}),
        Verb(
            "check", "Compares what the library tells and did with what the virtual board has.",
            "check\ncheck stations survey", check,
            {{"AREA", Kind::texts, "only these; helper, counters and wps are checked when named"}}),
    };
}

}  // namespace boardctl
