// What a verb is: its words, its options, its help, and the function that does it.
#pragma once

#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <vector>

#include "boardctl/session.h"

namespace boardctl {

using Json = nlohmann::ordered_json;

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

struct Option {
    const char* name;  // "IFNAME" of a positional, "--pin"
    Kind kind;
    const char* help;
    Range range = {};             // of a number
    const char* words = nullptr;  // "on|off": its values are no others
    bool may_be_empty = false;
};

class Arguments {
public:
    using Values = std::map<std::string, std::vector<std::string>>;
    explicit Arguments(Values values) : values_(std::move(values)) {}

    bool has(const std::string& name) const { return values_.contains(name); }
    std::string text(const std::string& name, const std::string& fallback = "") const;
    int number(const std::string& name, int fallback) const;
    std::vector<std::string> texts(const std::string& name) const;

private:
    Values values_;
};

// Decimal, or hexadecimal after "0x"; throws UsageError, which says what is allowed.
int number_of(const std::string& text, const std::string& name, Range range = {});

inline constexpr const char* kOnOff = "on|off|yes|no|1|0";
bool is_on(const std::string& text);  // of these words

struct Verb {
    const char* group;  // "ports"
    const char* name;   // "counters"; empty: the group is one verb
    const char* help;
    const char* examples;
    Outcome (*run)(Session& session, const Arguments& arguments);
    std::span<const Option> options = {};
    bool is_default = false;  // the group's verb where none is named
};

// Each file of verbs offers its own; main.cpp puts them together.
std::span<const Verb> start_verbs();
std::span<const Verb> radio_verbs();
std::span<const Verb> acl_verbs();
std::span<const Verb> wps_verbs();
std::span<const Verb> profile_verbs();
std::span<const Verb> port_verbs();
std::span<const Verb> switch_verbs();
std::span<const Verb> flash_verbs();
std::span<const Verb> panel_verbs();
std::span<const Verb> board_verbs();
std::span<const Verb> call_verbs();

}  // namespace boardctl
