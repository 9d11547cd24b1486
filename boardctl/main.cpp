// boardctl: drives the platform library, on the virtual board or on a real one.
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <optional>

#include "board/model/interfaces.h"
#include "board/store/store.h"
#include "board/tree/held_signals.h"
#include "boardctl/command_line.h"
#include "boardctl/output.h"
#include "boardctl/parts.h"
#include "boardctl/system.h"
#include "boardctl/text.h"
#include "boardctl/virtual_board.h"

namespace boardctl {
namespace {

namespace fs = std::filesystem;

std::vector<const Verb*> all_verbs() {
    std::vector<const Verb*> verbs;
    for (const auto& some :
         {start_verbs(), radio_verbs(), acl_verbs(), wps_verbs(), profile_verbs(), port_verbs(),
          switch_verbs(), flash_verbs(), panel_verbs(), board_verbs(), call_verbs()})
        for (const Verb& verb : some) verbs.push_back(&verb);
    return verbs;
}

Library load_libraries(const Request& request) {
    if (!request.is_virtual()) return Library(request.host_library, request.platform_library);
    const Parts parts = find_parts();
    return Library(parts.host_library, parts.platform_library);
}

// A closed pipe ends the work on the board; this process stays to report its status.
void handle_closed_pipe(void (*handler)(int)) {
    ::signal(SIGPIPE, handler);
}

// A caller's shell or script must see that the signal ended this call, too.
void end_if_interrupted(int status) {
    for (const int signal : {SIGINT, SIGTERM})
        if (status == 128 + signal) ::raise(signal);
}

// Lies in memory that the process which does the work shares with the one that waits for it.
struct Progress {
    bool has_ended = false;
};

Progress* shared_progress() {
    void* const place = ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                               MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED) throw Missing("no memory");
    return new (place) Progress;
}

void print_message(const std::string& line) {
    std::fprintf(stderr, "%s\n", shown(line).c_str());
}

void print_messages(const std::string& messages) {
    for (const std::string& line : split_lines(messages)) print_message(line);
}

class Call {
public:
    explicit Call(const Request& request)
        : request_(request), library_(load_libraries(request)), progress_(shared_progress()) {}

    int run() {
        for (const int signal : {SIGINT, SIGTERM}) ::signal(signal, SIG_DFL);
        handle_closed_pipe(SIG_IGN);
        const int status = request_.is_virtual() ? run_on_virtual_board() : run_here();
        end_if_interrupted(status);
        if (progress_->has_ended || status == kNotAllowed) return status;
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
        const bool is_start = request_.verb->group == std::string("start");
        const bool is_erased = is_start && request_.arguments.has("--erased");
        if (is_erased || (is_start && request_.arguments.has("--fresh")))
            board.make(is_erased);
        else
            board.make_if_missing();
        board.check_configuration(library_);
        if (is_start) board.power_on();
        return board.enter([this] {
            handle_closed_pipe(SIG_DFL);
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
            handle_closed_pipe(SIG_DFL);
            const int status = answer();
            std::fflush(nullptr);
            ::_exit(status);
        }
        return signals.wait_for(worker, SIGTERM);
    }

    int answer() {
        capture_.begin();
        std::optional<Outcome> outcome;
        std::string fault;
        int status = kFailed;
        try {
            outcome = work();
            status = outcome->status;
        } catch (const UsageError& error) {
            fault = error.what();
            status = kUsage;
        } catch (const Missing& error) {
            fault = error.what();
            status = kMissing;
        } catch (const std::exception& error) {
            fault = error.what();
        }
        const std::string messages = capture_.take();
        capture_.end();
        if (request_.verbose || status != kGood) print_messages(messages);
        try {
            if (outcome) print_answer(*outcome);
        } catch (const Failed& error) {
            fault = error.what();
            status = kFailed;
        }
        hint();
        if (!fault.empty()) print_message("boardctl: " + fault);
        progress_->has_ended = true;
        return status;
    }

    Outcome work() {
        Session session(library_, capture_, folders_, request_.is_virtual());
        if (request_.is_virtual()) VirtualBoard::load(library_);
        Outcome outcome = request_.verb->run(session, request_.arguments);
        if (request_.is_virtual()) VirtualBoard::save(library_);
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
    Progress* const progress_;
    Capture capture_;
    const Folders folders_;  // opened before the board is entered
};

// What is asked about calls by name needs no board.
std::optional<Json> told_of_functions(const Request& request) {
    if (request.verb->group != std::string("call")) return std::nullopt;
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
    const std::vector<const Verb*> verbs = all_verbs();
    const std::optional<Request> request = parse(verbs, argc, argv);
    if (!request) return kGood;
    const auto told = told_of_functions(*request);
    if (!told) return Call(*request).run();
    print_out(request->json       ? as_json(*told)
              : told->is_string() ? told->get<std::string>() + '\n'
                                  : as_text(*told, false));
    return kGood;
}

int explain(const std::exception& error, int status) {
    std::fprintf(stderr, "boardctl: %s\n", shown(error.what()).c_str());
    return status;
}

}  // namespace
}  // namespace boardctl

int main(int argc, char** argv) {
    using namespace boardctl;
    try {
        return run(argc, argv);
    } catch (const UsageError& error) {
        return explain(error, kUsage);
    } catch (const Missing& error) {
        return explain(error, kMissing);
    } catch (const std::exception& error) {
        return explain(error, kFailed);
    }
}
