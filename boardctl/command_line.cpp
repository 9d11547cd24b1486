#include "boardctl/command_line.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <memory>

namespace boardctl {
namespace {

constexpr const char* kFooter = R"(
Exit status
  0   good
  1   the board answered with a failure
  2   wrong command line
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
        app_.add_flag("--json", request_.json, "answer as JSON");
        app_.add_flag("--verbose", request_.verbose, "also show what the library printed");
        for (const Verb* verb : verbs) add(*verb);
    }

    std::optional<Request> parse(int argc, char** argv, int& status) {
        try {
            app_.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            status = app_.exit(error) == 0 ? kGood : kUsage;
            return std::nullopt;
        }
        const Row& row = chosen();
        request_.verb = row.verb;
        request_.arguments = arguments_of(row);
        return request_;
    }

private:
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
        for (size_t i = 0; i < row.values.size(); ++i)
            if (!row.values[i].empty()) values[row.verb->options[i].name] = row.values[i];
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

int number_of(const std::string& text, const std::string& name) {
    const bool is_hexadecimal = text.starts_with("0x");
    const char* const start = text.data() + (is_hexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    int value = 0;
    const auto [stop, error] = std::from_chars(start, end, value, is_hexadecimal ? 16 : 10);
    if (error != std::errc{} || stop != end) throw UsageError(name + " is no number: " + text);
    return value;
}

bool is_on(const std::string& text, const std::string& name) {
    for (const char* const word : {"on", "yes", "1"})
        if (text == word) return true;
    for (const char* const word : {"off", "no", "0"})
        if (text == word) return false;
    throw UsageError(name + " is neither on nor off: " + text);
}

std::optional<Request> parse(const std::vector<const Verb*>& verbs, int argc, char** argv,
                             int& status) {
    auto request = Parser(verbs).parse(argc, argv, status);
    if (request && request->host_library.empty() != request->platform_library.empty())
        throw UsageError("--host-library and --platform-library go together");
    if (request && !request->is_virtual() && !request->board.empty())
        throw UsageError("--board is for the virtual board");
    return request;
}

}  // namespace boardctl
