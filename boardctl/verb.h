// What a verb is: its words, its options, its help, and the function that does it.
#pragma once

#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "boardctl/session.h"

namespace boardctl {

using Json = nlohmann::ordered_json;

// Null where it is not known.
template <class Value>
Json if_known(bool is_known, const Value& value) {
    return is_known ? Json(value) : Json();
}

// What a verb answers. A status other than 0 says that the board answered with a failure.
struct Outcome {
    Json value;
    int status = kGood;
    bool is_shown = false;  // its texts are already escaped
};

// "rest": all words that follow, as they are; the last of a verb's options.
enum class Kind { positional, required, flag, text, number, texts, rest };

inline constexpr const char* kRest = "...";

struct Range {
    int first = std::numeric_limits<int>::min();
    int last = std::numeric_limits<int>::max();
};

inline constexpr const char* kOnOff = "on|off|yes|no|1|0";
bool is_on(const std::string& text);  // of these words

inline constexpr const char* kOrEmpty = "";

struct Option {
    constexpr Option(const char* its_name, Kind its_kind, const char* its_help,
                     const char* its_words = nullptr)
        : name(its_name), kind(its_kind), help(its_help), words(its_words) {}
    constexpr Option(const char* its_name, Kind its_kind, const char* its_help, Range its_range)
        : name(its_name), kind(its_kind), help(its_help), range(its_range), is_number(true) {}

    const char* name;  // "IFNAME" of a positional, "--pin"
    Kind kind;
    const char* help;
    const char* words = nullptr;  // "on|off": its values are no others; kOrEmpty
    Range range = {};
    bool is_number = kind == Kind::number;
};

class Arguments {
public:
    using Values = std::map<std::string, std::vector<std::string>>;
    explicit Arguments(Values values) : values_(std::move(values)) {}

    bool has(const std::string& name) const { return values_.contains(name); }
    bool has_any(std::initializer_list<const char*> names) const;
    std::string text(const std::string& name, const std::string& fallback = "") const;
    int number(const std::string& name, int fallback, Range range = {}) const;
    std::vector<std::string> texts(const std::string& name) const;

private:
    Values values_;
};

// Decimal, or hexadecimal after "0x"; throws UsageError, which says what is allowed.
int number_of(const std::string& text, const std::string& name, Range range = {});

// Throws UsageError unless the value is one of the words.
void require_one_of(const std::vector<std::string>& words, const std::string& value,
                    const std::string& name);

struct Verb {
    std::string group;  // "ports"
    std::string name;   // "counters"; empty: the group is one verb
    const char* help;
    std::string examples;  // a line each, without the program's name
    Outcome (*run)(Session& session, const Arguments& arguments);
    std::vector<Option> options;
    bool is_default = false;

    // The words are "ports counters", or "ports link*" for the verb that "ports" stands for.
    Verb(const std::string& words, const char* its_help, const char* its_examples,
         Outcome (*its_run)(Session&, const Arguments&), std::vector<Option> its_options = {});
};

using Verbs = std::vector<Verb>;

// Each file of verbs offers its own; main.cpp puts them together.
Verbs start_verbs(), radio_verbs(), acl_verbs(), wps_verbs(), profile_verbs(), port_verbs(),
    switch_verbs(), flash_verbs(), panel_verbs(), board_verbs(), call_verbs();

}  // namespace boardctl
