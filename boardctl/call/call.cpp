#include "boardctl/call/call.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "boardctl/call/values.h"
#include "boardctl/errors.h"
#include "boardctl/nearest.h"
#include "boardctl/text.h"
#include "border/words.h"

namespace boardctl {

using namespace border;

namespace {

using nlohmann::ordered_json;

// All parameters and results are of the integer class, which both machines pass in registers.
using AnyFunction = uintptr_t(uintptr_t, uintptr_t, uintptr_t, uintptr_t);

const Function& find_function(std::string_view name) {
    for (const Function& function : exports())
        if (name == function.name) return function;
    std::vector<std::string> names;
    for (const ExportedFunction& function : exported_functions()) names.push_back(function.name);
    throw UsageError("no exported function is called \"" + shown(name) + '"' +
                     suggestion(name, names));
}

const char* running = nullptr;

void report_end() {
    if (running == nullptr) return;
    std::fflush(nullptr);
    std::fprintf(stderr, "%s ended the process\n", running);
    ::_exit(kFailed);
}

// Some functions end the process with status 0 when the board fails them.
class Running {
public:
    explicit Running(const char* name) {
        [[maybe_unused]] static const int registered = std::atexit(report_end);
        running = name;
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { running = nullptr; }
};

uintptr_t run(const Library& library, const Function& function, Frame& frame) {
    auto* const call = library.get<AnyFunction>(function.name);
    const Frame::Words words = frame.words();
    const Running guard(function.name);
    const bool on_socket = function.socket == Socket::needed;
    if (on_socket) library.get<int()>(export_that(Socket::opened).name)();
    const uintptr_t result = call(words[0], words[1], words[2], words[3]);
    if (on_socket) library.get<int()>(export_that(Socket::closed).name)();
    return result;
}

ordered_json result_value(const Function& function, uintptr_t result) {
    switch (function.result) {
        case Result::i32:
            return static_cast<int32_t>(result);
        case Result::u32:
            return static_cast<uint32_t>(result);
        case Result::text:
            if (result != 0) return shown(reinterpret_cast<const char*>(result));
            break;
        case Result::record:
            if (result != 0)
                return record_values(*function.record,
                                     reinterpret_cast<const unsigned char*>(result));
            break;
        default:
            break;
    }
    return nullptr;
}

// The nodes are the host's.
void free_lists(const Library& library, const Function& function, const Frame::Words& words) {
    for (size_t i = 0; i < function.count; ++i)
        if (function.parameters[i].kind == Kind::filled_list && words[i] != 0)
            library.get_host<int(void*, void*)>("free_all_list")(reinterpret_cast<void*>(words[i]),
                                                                 nullptr);
}

std::string kind_written(const Parameter& parameter) {
    switch (parameter.kind) {
        case Kind::number:
        case Kind::size:
        case Kind::offset:
        case Kind::length:
            return "number from " + std::to_string(parameter.range.first) + " to " +
                   std::to_string(parameter.range.last) + ", also 0x...";
        case Kind::mac:
            return "MAC address, or - for none";
        case Kind::bytes:
            return "hexadecimal digits, @FILE, or - for none";
        case Kind::record:
        case Kind::changed_record:
            return std::string(parameter.record->name) + ": FIELD=VALUE,..., " +
                   std::to_string(parameter.room * parameter.record->size) +
                   " bytes as hexadecimal digits or @FILE, or - for none";
        default:
            return "text, in which \\\\ is a backslash and \\xNN a byte, or - for none";
    }
}

std::string how_written(const Parameter& parameter) {
    return kind_written(parameter) + (*parameter.unit != '\0' ? "; " : "") + parameter.unit +
           (parameter.secret ? "; may hold a secret" : "");
}

std::string failure(const Outcome& outcome, Result result) {
    if (outcome.meaning != Outcome::fails && outcome.meaning != Outcome::untouched) return {};
    const bool untouched = outcome.meaning == Outcome::untouched;
    const std::string number = result == Result::u32
                                   ? std::to_string(static_cast<uint32_t>(outcome.result))
                                   : std::to_string(outcome.result);
    return "It fails with " + number + (untouched ? " and fills nothing then.\n" : ".\n");
}

// A frame of the arguments; what is wrong with them is shown as all text of others is.
Frame frame_of(const Function& function, const std::vector<std::string>& arguments,
               const Frame::ReadFile& read_file) try {
    return {function, arguments, read_file};
} catch (const BadArgument& error) {
    const std::string word = error.word ? '"' + shown(*error.word) + '"' : "";
    throw UsageError(error.before + word + error.after);
}

}  // namespace

std::vector<ExportedFunction> exported_functions() {
    std::vector<ExportedFunction> all;
    for (const Function& function : exports()) all.push_back({function.name, function.help});
    std::sort(all.begin(), all.end(),
              [](const auto& left, const auto& right) { return left.name < right.name; });
    return all;
}

std::string usage(const std::string& name) {
    const Function& function = find_function(name);
    std::string first = "usage: call " + name;
    std::string rows;
    std::string filled;
    for (size_t i = 0; i < function.count; ++i) {
        const Parameter& parameter = function.parameters[i];
        if (is_answer(parameter))
            filled += std::string(filled.empty() ? "" : ", ") + parameter.name;
        if (!takes_argument(parameter)) continue;
        first += std::string(" ") + parameter.name;
        rows += std::string("  ") + parameter.name + ": " + how_written(parameter) + '\n';
    }
    if (!filled.empty())
        rows +=
            "It fills " + filled + "; NAME=@FILE writes that to a file, NAME=- gives no room.\n";
    rows += failure(function.outcome, function.result);
    if (function.socket == Socket::needed)
        rows += "The switch control socket is opened for the call.\n";
    return first + "\n\n" + function.help + '\n' + rows + "Example: call " + name +
           (*function.example != '\0' ? " " : "") + function.example + '\n';
}

ordered_json call_function(const Library& library, const std::string& name,
                           const std::vector<std::string>& arguments, const Folders& folders) {
    const Function& function = find_function(name);
    const Frame::ReadFile read_file = [&](const std::string& path) { return folders.read(path); };
    Frame frame = frame_of(function, arguments, read_file);
    const uintptr_t result = run(library, function, frame);
    if (const char* const place = frame.overrun())
        throw Failed(name + " wrote past its buffer " + place);

    ordered_json answer = ordered_json::object();
    if (function.result != Result::nothing) answer["result"] = result_value(function, result);
    answer.update(frame_values(function, frame, result));
    for (size_t i = 0; i < function.count; ++i)
        if (const std::string& path = frame.file(i); !path.empty())
            folders.write(path, std::string(frame.used(i, result)));
    free_lists(library, function, frame.words());
    return answer;
}

}  // namespace boardctl
