#include "boardctl/call/call.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "boardctl/call/frame.h"
#include "boardctl/errors.h"
#include "boardctl/nearest.h"
#include "boardctl/text.h"

namespace boardctl {

using namespace calls;

namespace {

using nlohmann::ordered_json;

// All parameters and results are of the integer class, which both machines pass in registers.
using AnyFunction = uintptr_t(uintptr_t, uintptr_t, uintptr_t, uintptr_t);

const Function& find_function(std::string_view name) {
    for (const auto functions : {system_functions(), network_functions()})
        for (const Function& function : functions)
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
    if (function.needs_socket) library.get<int()>("switch_ioctl_init")();
    const uintptr_t result = call(words[0], words[1], words[2], words[3]);
    if (function.needs_socket) library.get<int()>("switch_ioctl_fini")();
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
        case Result::nothing:
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

std::string how_written(const Parameter& parameter) {
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

}  // namespace

std::vector<ExportedFunction> exported_functions() {
    std::vector<ExportedFunction> all;
    for (const auto functions : {system_functions(), network_functions()})
        for (const Function& function : functions) all.push_back({function.name, function.help});
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
    if (function.needs_socket) rows += "The switch control socket is opened for the call.\n";
    return first + "\n\n" + function.help + '\n' + rows;
}

ordered_json call_function(const Library& library, const std::string& name,
                           const std::vector<std::string>& arguments, const Folders& folders) {
    const Function& function = find_function(name);
    Frame frame(function, arguments, folders);
    const uintptr_t result = run(library, function, frame);
    frame.check_guards();

    ordered_json answer = ordered_json::object();
    if (function.result != Result::nothing) answer["result"] = result_value(function, result);
    answer.update(frame.values(result));
    frame.write_files(result);
    free_lists(library, function, frame.words());
    return answer;
}

}  // namespace boardctl
