// boardctl: drives the platform library, on the virtual board or on a real one.
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>

#include "board/model/interfaces.h"
#include "board/store/store.h"
#include "board/tree/held_signals.h"
#include "boardctl/call/call.h"
#include "boardctl/program/command_line.h"
#include "boardctl/program/output.h"
#include "boardctl/program/parts.h"
#include "boardctl/program/system.h"
#include "boardctl/program/virtual_board.h"
#include "boardctl/text.h"

namespace boardctl {
namespace {

namespace fs = std::filesystem;

Verbs all_verbs() {
    Verbs verbs;
    for (const auto some :
         {start_verbs, radio_verbs, acl_verbs, wps_verbs, profile_verbs, port_verbs, switch_verbs,
          flash_verbs, panel_verbs, board_verbs, call_verbs})
        for (Verb& verb : some()) verbs.push_back(std::move(verb));
    return verbs;
}

Library load_libraries(const Request& request) {
    if (!request.is_virtual()) return Library(request.host_library, request.platform_library);
    const Parts parts = find_parts();
    return Library(parts.host_library, parts.platform_library);
}

// False, in memory that the process which does the work shares with the one that waits for it.
bool* shared_flag() {
    void* const place =
        ::mmap(nullptr, sizeof(bool), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED) throw Missing("no memory");
    return new (place) bool(false);
}

void print_message(const std::string& line) {
    std::fprintf(stderr, "%s\n", shown(line).c_str());
}

void print_messages(const std::string& messages) {
    for (const std::string& line : split_lines(messages)) print_message(line);
}

// The status of the work, or of the fault that ended it.
int guarded(std::string& fault, const std::function<int()>& work) {
    try {
        return work();
    } catch (const std::exception& error) {
        fault = error.what();
        const auto* const ours = dynamic_cast<const Fault*>(&error);
        return ours == nullptr ? kFailed : ours->status;
    }
}

class Call {
public:
    explicit Call(const Request& request)
        : request_(request), library_(load_libraries(request)), has_ended_(shared_flag()) {}

    int run() {
        for (const int signal : {SIGINT, SIGTERM}) ::signal(signal, SIG_DFL);
        ::signal(SIGPIPE, SIG_IGN);  // it ends the work on the board; we stay to report its status
        const int status = request_.is_virtual() ? run_on_virtual_board() : run_here();
        // A caller's shell or script must see that the signal ended this call, too.
        for (const int signal : {SIGINT, SIGTERM})
            if (status == 128 + signal) ::raise(signal);
        if (*has_ended_ || status == kNotAllowed) return status;
        // The library may end its process; a crash does.
        print_messages(capture_.take());
        if (status > 128) std::fprintf(stderr, "boardctl: ended by signal %d\n", status - 128);
        return status == kGood ? kFailed : status;
    }

private:
    int run_on_virtual_board() {
        const VirtualBoard board(
            request_.board.empty() ? VirtualBoard::usual_place() : fs::path(request_.board),
            find_parts().tree);
        const bool is_start = request_.verb->group == "start";
        const bool is_erased = is_start && request_.arguments.has("--erased");
        if (is_erased || (is_start && request_.arguments.has("--fresh")))
            board.make(is_erased);
        else
            board.make_if_missing();
        board.check_configuration(Host{library_});
        if (is_start) board.power_on();
        return board.enter([this] {
            ::signal(SIGPIPE, SIG_DFL);
            use_board_drivers();
            return answer();
        });
    }

    // In a process of its own, since the library ends the one that calls it when a driver refuses.
    int run_here() {
        board::set_root("/.");
        std::fflush(nullptr);
        const board::HeldSignals signals;
        const pid_t worker = ::fork();
        if (worker < 0) throw Missing("cannot start a process");
        if (worker == 0) {
            signals.release();
            ::signal(SIGPIPE, SIG_DFL);
            const int status = answer();
            std::fflush(nullptr);
            ::_exit(status);
        }
        return signals.wait_for(worker, SIGTERM);
    }

    int answer() {
        capture_.begin();
        Outcome outcome;
        std::string fault;
        int status = guarded(fault, [&] {
            outcome = work();
            return outcome.status;
        });
        const bool has_answer = fault.empty();
        const std::string messages = capture_.take();
        capture_.end();
        if (request_.verbose || status != kGood) print_messages(messages);
        if (has_answer)
            status = guarded(fault, [&] {
                print_answer(outcome);
                return status;
            });
        hint();
        if (!fault.empty()) print_message("boardctl: " + fault);
        *has_ended_ = true;
        return status;
    }

    Outcome work() {
        Session session(library_, capture_, folders_, request_.is_virtual());
        if (request_.is_virtual()) VirtualBoard::load(session.host);
        Outcome outcome = request_.verb->run(session, request_.arguments);
        if (request_.is_virtual()) VirtualBoard::save(session.host);
        return outcome;
    }

    // Before its start a board answers little; say why.
    void hint() const {
        constexpr std::string_view kNeedStart[] = {"check",    "leds",   "radios",
                                                   "stations", "survey", "wps"};
        if (!request_.is_virtual() || board::interface_exists("br0")) return;
        for (const std::string_view group : kNeedStart)
            if (group == request_.verb->group)
                print_message("boardctl: this board was never started: boardctl start");
    }

    void print_answer(const Outcome& outcome) {
        const Json answer = outcome.is_shown ? outcome.value : escaped(outcome.value);
        print_out(request_.json ? as_json(answer) : as_text(answer, ::isatty(STDOUT_FILENO)));
    }

    const Request& request_;
    const Library library_;
    bool* const has_ended_;
    Capture capture_;
    const Folders folders_;  // opened before the board is entered
};

// What is asked about calls by name needs no board.
std::optional<Json> told_of_functions(const Request& request) {
    if (request.verb->group != "call") return std::nullopt;
    if (request.arguments.has("--usage")) return Json(usage(request.arguments.text("--usage")));
    if (!request.arguments.has("--list")) return std::nullopt;
    Json rows = Json::array();
    for (const ExportedFunction& function : exported_functions())
        rows.push_back({
            {"function", function.name},
            {"help",     function.help}
        });
    return rows;
}

int run(int argc, char** argv) {
    const Verbs verbs = all_verbs();
    const std::optional<Request> request = parse(verbs, argc, argv);
    if (!request) return kGood;
    const auto told = told_of_functions(*request);
    if (!told) return Call(*request).run();
    print_out(request->json       ? as_json(*told)
              : told->is_string() ? told->get<std::string>() + '\n'
                                  : as_text(*told, false));
    return kGood;
}

}  // namespace
}  // namespace boardctl

int main(int argc, char** argv) {
    using namespace boardctl;
    std::string fault;
    const int status = guarded(fault, [&] { return run(argc, argv); });
    if (!fault.empty()) print_message("boardctl: " + fault);
    return status;
}
