// The driver profiles of the radios.
#include "boardctl/facts/profile.h"
#include "board/model/radio_driver.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

using board::KeyFile;

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

}  // namespace

Verbs profile_verbs() {
    return {
        Verb("profile show", "Shows a radio's driver profile, or some of its keys.",
             "profile show ra0\nprofile show rai0 SSID1 Channel", show,
             {kRadio, {"KEY", Kind::texts, "only these keys"}}),
        Verb("profile diff*", "How the profile differs from the one that the driver runs with.",
             "profile diff\nprofile diff rai0 --json", diff, {kRadioOrAll}),
    };
}

}  // namespace boardctl
