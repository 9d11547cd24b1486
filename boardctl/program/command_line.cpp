#include "boardctl/program/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "boardctl/nearest.h"
#include "boardctl/program/output.h"
#include "boardctl/program/parts.h"

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

// A verb and the parser of its options.
struct Row {
    const Verb& verb;
    CLI::App* app;
};

Row add_verb(CLI::App& parent, const Verb& verb, const std::string& name) {
    CLI::App* const app = parent.add_subcommand(name, verb.help);
    bool takes_rest = false;
    for (const Option& option : verb.options) {
        takes_rest |= option.kind == Kind::rest;
        if (option.kind == Kind::rest) continue;
        if (option.kind == Kind::flag) {
            app->add_flag(option.name, option.help);
            continue;
        }
        app->add_option(option.name, option.help)
            ->required(option.kind == Kind::required)
            ->expected(option.kind == Kind::texts ? CLI::detail::expected_max_vector_size : 1)
            ->type_name(option.kind == Kind::number ? "NUMBER" : "TEXT");
    }
    app->fallthrough(!takes_rest)->prefix_command(takes_rest);
    return {verb, app};
}

std::vector<std::string> split_at_bars(const std::string& text) {
    std::vector<std::string> words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, '|');) words.push_back(word);
    return words;
}

void check(const Option& option, const std::string& value) {
    const auto words = split_at_bars(option.words == nullptr ? "" : option.words);
    if (value.empty() && (option.words == nullptr || !words.empty()))
        throw UsageError(std::string(option.name) + " is empty: " + option.help);
    if (option.is_number) number_of(value, option.name, option.range);
    if (!words.empty()) require_one_of(words, value, option.name);
}

class Parser {
public:
    explicit Parser(const Verbs& verbs) : verbs_(verbs) {
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
        for (const Verb& verb : verbs) add(verb);
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
        request_.verb = &row.verb;
        request_.arguments = arguments_of(row);
        return request_;
    }

private:
    // The verbs as they are typed: "start", "ports link".
    std::vector<std::string> verb_names(const std::string& group = "") const {
        std::vector<std::string> names;
        for (const Verb& verb : verbs_) {
            if (group == verb.group) names.push_back(verb.name);
            if (!group.empty()) continue;
            names.push_back(verb.group);
            if (!verb.name.empty()) names.push_back(verb.group + ' ' + verb.name);
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
        for (const Verb& verb : verbs_) {
            if (group != verb.group) continue;
            if (verb.is_default) help = verb.help;
            names += (names.empty() ? " (" : ", ") + verb.name;
        }
        return help + names + ')';
    }

    // Of a group, or of one of its verbs.
    std::string examples_of(const std::string& group, const std::string& name = "") const {
        std::string lines = "\nExamples\n";
        for (const Verb& verb : verbs_)
            if (group == verb.group && (name.empty() || name == verb.name))
                for (const std::string& line : split_lines(verb.examples))
                    lines += "  boardctl " + line + '\n';
        return lines;
    }

    // Words that stand for themselves, such as "-60"; a last "--json" is ours all the same.
    Arguments arguments_of(const Row& row) {
        Arguments::Values values;
        for (const Option& option : row.verb.options) {
            const CLI::Option* const parsed = row.app->get_option_no_throw(option.name);
            if (parsed == nullptr || parsed->count() == 0) continue;
            for (const std::string& value : parsed->results()) check(option, value);
            values[option.name] = parsed->results();
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
        if (!verb.name.empty() && (group_ == nullptr || group_->get_name() != verb.group))
            group_ = app_.add_subcommand(verb.group, group_help(verb.group))
                         ->fallthrough()
                         ->footer(examples_of(verb.group));
        rows_.push_back(verb.name.empty() ? add_verb(app_, verb, verb.group)
                                          : add_verb(*group_, verb, verb.name));
        rows_.back().app->footer(examples_of(verb.group, verb.name));
    }

    // The verb named last, or the default one of a group that was named alone.
    const Row& chosen() const {
        for (const Row& row : rows_)
            if (row.app->parsed()) return row;
        const std::string group = app_.get_subcommands().front()->get_name();
        for (const Row& row : rows_)
            if (row.verb.group == group && row.verb.is_default) return row;
        throw UsageError("name a verb of " + group);
    }

    CLI::App app_{"Drives the board platform library on the virtual board, or on a real one."};
    const Verbs& verbs_;
    CLI::App* group_ = nullptr;
    Request request_;
    std::vector<Row> rows_;
};

}  // namespace

std::optional<Request> parse(const Verbs& verbs, int argc, char** argv) {
    auto request = Parser(verbs).parse(argc, argv);
    if (request && request->host_library.empty() != request->platform_library.empty())
        throw UsageError("--host-library and --platform-library go together");
    if (request && !request->is_virtual() && !request->board.empty())
        throw UsageError("--board is for the virtual board");
    return request;
}

}  // namespace boardctl
