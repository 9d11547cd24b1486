// The driver profiles of the radios.
#include <algorithm>
#include <set>

#include "board/model/radio_driver.h"
#include "board/store/key_file.h"
#include "boardctl/verbs/profile_changes.h"
#include "boardctl/verbs/radio_names.h"

namespace boardctl {
namespace {

using board::KeyFile;

std::vector<std::string> keys_of(const KeyFile& file) {
    std::vector<std::string> keys;
    std::set<std::string_view> seen;
    for (const std::string& line : file.lines())
        if (const auto pair = board::split_key_value(line); pair && seen.insert(pair->key).second)
            keys.emplace_back(pair->key);
    return keys;
}

Json value_of(const KeyFile& file, const std::string& key) {
    const auto value = file.get(key);
    return value ? Json(*value) : Json();
}

KeyFile profile_of(const Radio& radio) {
    auto file = KeyFile::load(radio.profile_path);
    if (!file) throw Failed("cannot read the profile of " + radio.main_ifname);
    return *std::move(file);
}

Outcome show(Session& session, const Arguments& arguments) {
    const Radio radio = named_radio(session, arguments.text("IFNAME"));
    const KeyFile file = profile_of(radio);
    const auto wanted = arguments.texts("KEY");
    Json keys = Json::object();
    for (const std::string& key : wanted.empty() ? keys_of(file) : wanted)
        keys[key] = value_of(file, key);
    return {keys};
}

Outcome diff(Session& session, const Arguments& arguments) {
    session.require_virtual("a look into its drivers");
    Json answer = Json::object();
    for (const Radio& radio : named_radios(session, arguments)) {
        const auto in_force = board::driver_profile(radio.main_ifname).value_or(KeyFile{});
        answer[radio.main_ifname] = changes_between(in_force, profile_of(radio));
    }
    return {answer};
}

constexpr Option kShowOptions[] = {
    {"IFNAME", Kind::required, "an interface of the radio"},
    {"KEY", Kind::texts, "only these keys"},
};
constexpr Option kDiffOptions[] = {
    {"IFNAME", Kind::positional, "an interface of the radio; all when not given"},
};

}  // namespace

Json changes_between(const KeyFile& before, const KeyFile& after) {
    Json rows = Json::array();
    const auto keys = keys_of(after);
    for (const std::string& key : keys)
        if (before.get(key) != after.get(key))
            rows.push_back(
                {{"key", key}, {"before", value_of(before, key)}, {"after", value_of(after, key)}});
    for (const std::string& key : keys_of(before))
        if (!after.get(key))
            rows.push_back({{"key", key}, {"before", value_of(before, key)}, {"after", Json()}});
    return rows;
}

std::span<const Verb> profile_verbs() {
    static const Verb kVerbs[] = {
        {"profile", "show", "Shows a radio's driver profile, or some of its keys.",
         "  boardctl profile show ra0\n  boardctl profile show rai0 SSID1 Channel", show,
         kShowOptions},
        {"profile", "diff", "How the profile differs from the one that the driver runs with.",
         "  boardctl profile diff\n  boardctl profile diff rai0 --json", diff, kDiffOptions, true},
    };
    return kVerbs;
}

}  // namespace boardctl
