// Any exported function by its name.
#include "boardctl/call/call.h"

#include "boardctl/verb.h"

namespace boardctl {
namespace {

Outcome call(Session& session, const Arguments& arguments) {
    auto words = arguments.texts(kRest);
    if (words.empty()) throw UsageError("name a function; \"boardctl call --list\" knows them");
    const std::string name = words.front();
    words.erase(words.begin());
    session.progress(name);
    return {call_function(session.library, name, words, session.folders), kGood, true};
}

}  // namespace

Verbs call_verbs() {
    return {
        Verb("call", "Calls any function of the library by its name.",
             "call --list\ncall --usage get_bootconfig\n"
             "call get_bootconfig ethaddr 64\ncall mt_rssi_to_pwr -60",
             call,
             {{"--list", Kind::flag, "the functions"},
              {"--usage", Kind::text, "what a function takes and answers"},
              {kRest, Kind::rest, "function and arguments"}}),
    };
}

}  // namespace boardctl
