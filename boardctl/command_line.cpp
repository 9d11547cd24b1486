#include "boardctl/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <memory>

#include "boardctl/nearest.h"
#include "boardctl/output.h"
#include "boardctl/parts.h"

namespace boardctl {
namespace {

constexpr const char* kFooter = R"(
Exit status
  0   good
  1   the board answered with a failure
  2   wrong command line, or a mistake in the virtual board's configuration
  3   a library or the board is not there
  77  this machine does not let us enter the virtual board

Examples
  boardctl start
  boardctl stations --json
  boardctl survey ra0
  boardctl ports counters
  boardctl call mt_rssi_to_pwr -60
)";

// Where the parser puts the values of one verb's options.
struct Row {
    const Verb* verb;
    CLI::App* app;
    std::vector<std::vector<std::string>> values;
};

std::string help_of(const Verb& verb) {
    return std::string(verb.examples).empty() ? ""
                                              : "\nExamples\n" + std::string(verb.examples) + '\n';
}

void add_option(CLI::App& app, const Option& option, std::vector<std::string>& values) {
    if (option.kind == Kind::rest) return;
    if (option.kind == Kind::flag) {
        app.add_flag_callback(
            option.name, [&values] { values = {"1"}; }, option.help);
        return;
    }
    CLI::Option* added = nullptr;
    if (option.kind == Kind::texts)
        added = app.add_option(option.name, values, option.help);
    else
        added = app.add_option_function<std::string>(
            option.name, [&values](const std::string& value) { values = {value}; }, option.help);
    if (option.kind == Kind::required) added->required();
    added->type_name(option.kind == Kind::number ? "NUMBER" : "TEXT");
}

std::unique_ptr<Row> add_verb(CLI::App& parent, const Verb& verb, const char* name) {
    CLI::App* const app = parent.add_subcommand(name, verb.help);
    app->footer(help_of(verb));
    auto row = std::make_unique<Row>(Row{&verb, app, {}});
    row->values.resize(verb.options.size());
    bool takes_rest = false;
    for (size_t i = 0; i < verb.options.size(); ++i) {
        add_option(*app, verb.options[i], row->values[i]);
        takes_rest |= verb.options[i].kind == Kind::rest;
    }
    app->fallthrough(!takes_rest)->prefix_command(takes_rest);
    return row;
}

std::vector<std::string> split_at_bars(std::string_view text) {
    std::vector<std::string> words;
    for (size_t bar = 0; bar != std::string_view::npos; text.remove_prefix(bar + 1)) {
        bar = text.find('|');
        words.emplace_back(text.substr(0, bar));
        if (bar == std::string_view::npos) break;
    }
    return words;
}

void check(const Option& option, const std::string& value) {
    if (value.empty() && !option.may_be_empty)
        throw UsageError(std::string(option.name) + " is empty: " + option.help);
    if (option.kind == Kind::number || option.range.last != Range().last)
        number_of(value, option.name, option.range);
    if (option.words == nullptr) return;
    const auto words = split_at_bars(option.words);
    if (std::find(words.begin(), words.end(), value) == words.end())
        throw UsageError(std::string(option.name) + " is " + alternatives(words) + ", not " +
                         value);
}

class Parser {
public:
    explicit Parser(const std::vector<const Verb*>& verbs) : verbs_(verbs) {
        app_.name("boardctl");
        app_.footer(kFooter)->require_subcommand(1);
        app_.add_option("--board", request_.board, "folder of the virtual board")->type_name("DIR");
        app_.add_option("--host-library", request_.host_library,
                        "with --platform-library: drive a real board through these")
            ->type_name("PATH");
        app_.add_option("--platform-library", request_.platform_library, "see --host-library")
            ->type_name("PATH");
        app_.set_version_flag("--version", "", "print the version and end");
        app_.add_flag("--json", request_.json, "answer as JSON");
        app_.add_flag("--verbose", request_.verbose, "also show what the library printed");
        for (const Verb* verb : verbs) add(*verb);
    }

    std::optional<Request> parse(int argc, char** argv) {
        try {
            app_.parse(argc, argv);
        } catch (const CLI::CallForHelp&) {
            print_out(app_.help());
            return std::nullopt;
        } catch (const CLI::CallForVersion&) {
            print_out(std::string("boardctl ") + version() + '\n');
            return std::nullopt;
        } catch (const CLI::ParseError& error) {
            throw UsageError(complaint(error));
        }
        for (const CLI::Option* option : app_.get_options())
            if (option->count() > 0 && option->results().front().empty())
                throw UsageError(option->get_name() + " is empty: " + option->get_description());
        const Row& row = chosen();
        request_.verb = row.verb;
        request_.arguments = arguments_of(row);
        return request_;
    }

private:
    // The verbs as they are typed: "start", "ports link".
    std::vector<std::string> verb_names(const std::string& group = "") const {
        std::vector<std::string> names;
        for (const Verb* verb : verbs_) {
            const std::string name = verb->name;
            if (group == verb->group) names.push_back(name);
            if (!group.empty()) continue;
            names.push_back(verb->group + (name.empty() ? "" : ' ' + name));
            if (names.size() == 1 || names.back().find(' ') != std::string::npos)
                names.push_back(verb->group);
        }
        return names;
    }

    static void add_options(const CLI::App& app, std::vector<std::string>& names) {
        for (const CLI::Option* option : app.get_options())
            for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }

    // One line for what the parser did not take.
    std::string complaint(const CLI::ParseError& error) const {
        const auto parsed = app_.get_subcommands();
        const CLI::App* const group = parsed.empty() ? nullptr : parsed.front();
        const bool has_verb = group != nullptr && (group->get_subcommands({}).empty() ||
                                                   !group->get_subcommands().empty());
        const CLI::App* const verb =
            !has_verb || group->get_subcommands().empty() ? group : group->get_subcommands()[0];
        for (const std::string& word : app_.remaining(true)) {
            if (word.starts_with('-')) {
                std::vector<std::string> options;
                add_options(app_, options);
                if (has_verb) add_options(*verb, options);
                return "unknown option '" + word + '\'' + suggestion(word, options);
            }
            if (has_verb) return "nothing expects '" + word + "'; " + help_hint(*verb);
            const std::string name = group == nullptr ? word : group->get_name() + ' ' + word;
            return "unknown verb '" + name + '\'' + suggestion(name, verb_names()) +
                   (group == nullptr ? ""
                                     : "; " + group->get_name() + " has " +
                                           alternatives(verb_names(group->get_name())));
        }
        if (group != nullptr) return error.what() + ("; " + help_hint(*verb));
        return error.get_name() == "RequiredError" ? "name a verb; boardctl --help lists them"
                                                   : error.what();
    }

    static std::string help_hint(const CLI::App& verb) {
        const CLI::App* const group = verb.get_parent();
        const bool is_nested = group->get_parent() != nullptr;
        return "see boardctl " + (is_nested ? group->get_name() + ' ' : "") + verb.get_name() +
               " --help";
    }

    // Of a group: what it does when it stands alone, and its verbs.
    std::string group_help(const std::string& group) const {
        std::string help;
        std::string names;
        for (const Verb* verb : verbs_) {
            if (group != verb->group) continue;
            if (verb->is_default) help = verb->help;
            names += (names.empty() ? " (" : ", ") + std::string(verb->name);
        }
        return help + names + ')';
    }

    std::string group_examples(const std::string& group) const {
        std::string lines = "\nExamples\n";
        for (const Verb* verb : verbs_)
            if (group == verb->group) lines += std::string(verb->examples) + '\n';
        return lines;
    }

    // Words that stand for themselves, such as "-60"; a last "--json" is ours all the same.
    Arguments arguments_of(const Row& row) {
        Arguments::Values values;
        for (size_t i = 0; i < row.values.size(); ++i) {
            if (row.values[i].empty()) continue;
            for (const std::string& value : row.values[i]) check(row.verb->options[i], value);
            values[row.verb->options[i].name] = row.values[i];
        }
        auto rest = row.app->remaining();
        if (!rest.empty() && rest.back() == "--json") {
            request_.json = true;
            rest.pop_back();
        }
        if (!rest.empty()) values[kRest] = rest;
        return Arguments(std::move(values));
    }

    void add(const Verb& verb) {
        if (*verb.name == '\0') {
            rows_.push_back(add_verb(app_, verb, verb.group));
            return;
        }
        if (group_ == nullptr || group_->get_name() != verb.group)
            group_ = app_.add_subcommand(verb.group, group_help(verb.group))
                         ->fallthrough()
                         ->footer(group_examples(verb.group));
        rows_.push_back(add_verb(*group_, verb, verb.name));
    }

    // The verb named last, or the default one of a group that was named alone.
    const Row& chosen() const {
        for (const auto& row : rows_)
            if (row->app->parsed()) return *row;
        const std::string group = app_.get_subcommands().front()->get_name();
        for (const auto& row : rows_)
            if (row->verb->group == group && row->verb->is_default) return *row;
        throw UsageError("name a verb of " + group);
    }

    CLI::App app_{"Drives the board platform library on the virtual board, or on a real one."};
    const std::vector<const Verb*>& verbs_;
    CLI::App* group_ = nullptr;
    Request request_;
    std::vector<std::unique_ptr<Row>> rows_;
};

}  // namespace

std::string Arguments::text(const std::string& name, const std::string& fallback) const {
    const auto values = values_.find(name);
    return values == values_.end() ? fallback : values->second.back();
}

std::vector<std::string> Arguments::texts(const std::string& name) const {
    const auto values = values_.find(name);
    return values == values_.end() ? std::vector<std::string>{} : values->second;
}

int Arguments::number(const std::string& name, int fallback) const {
    return has(name) ? number_of(text(name), name) : fallback;
}

int number_of(const std::string& text, const std::string& name, Range range) {
    const bool is_hexadecimal = text.starts_with("0x");
    const char* const start = text.data() + (is_hexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    int value = 0;
    const auto [stop, error] = std::from_chars(start, end, value, is_hexadecimal ? 16 : 10);
    if (error != std::errc{} || stop != end || value < range.first || value > range.last)
        throw UsageError(name + " is a number from " + std::to_string(range.first) + " to " +
                         std::to_string(range.last) + ", not " + text);
    return value;
}

bool is_on(const std::string& text) {
    return text == "on" || text == "yes" || text == "1";
}

std::optional<Request> parse(const std::vector<const Verb*>& verbs, int argc, char** argv) {
    auto request = Parser(verbs).parse(argc, argv);
    if (request && request->host_library.empty() != request->platform_library.empty())
        throw UsageError("--host-library and --platform-library go together");
    if (request && !request->is_virtual() && !request->board.empty())
        throw UsageError("--board is for the virtual board");
    return request;
}

}  // namespace boardctl
