// The board that a test runs the library on: a host in its factory state, a store in memory, a
// shell that writes down instead of running, sleeps that take no time. Programs that call the
// library a million times stand on it, too.
//
//   class BootFlags : public harness::Board {};
//
//   TEST_F(BootFlags, AsksTheTool) {
//       answer("/sbin/uboot_env -g ftm", "on\n");
//       EXPECT_EQ(1, check_ated_flag());
//       EXPECT_EQ(Lines{"$< /sbin/uboot_env -g ftm"}, journal());
//   }
//
// The journal holds every effect in order. A command is its exact text after a mark for its runner:
// "$ " system, "$2 " system2, "$3 " system3, "$< " and "$> " popen to read and to write. A message
// is its line after "out " or "err ". After each test the fixture checks that all was given back,
// that all was opened close-on-exec, that each failure asked for took place, that journal(), out()
// or err() has shown every message, and that inputs() has taken all there was.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "board/host/state.h"
#include "board/store/memory.h"
#include "tests/support/case_name.h"
#include "tests/support/library_hook.h"

namespace harness {

using Lines = std::vector<std::string>;

// The path of a file that the tests keep, by its name below tests/.
std::string test_file(const std::string& name);

// The index file that a test starts with, by the host's factory state: ra0 to ra3 and apcli0 on
// radio 0, rai0 to rai3 and apclii0 on radio 1.
extern const char* const kL1Profile;
inline constexpr const char* kL1ProfilePath = "/etc/wireless/l1profile.dat";
inline constexpr const char* kProfilePath[] = {"/etc/wireless/radio0.dat",
                                               "/etc/wireless/radio1.dat"};
inline constexpr const char* kPinPath = "/sys/devices/platform/10005000.pinctrl/mt_gpio";

// What a command answers: the runner's result (system: a wait status, system2: an exit status) and
// what popen's caller reads.
struct Answer {
    Answer(int with_status = 0) : status(with_status) {}
    Answer(const char* with_output) : status(0), output(with_output) {}
    Answer(std::string with_output) : status(0), output(std::move(with_output)) {}

    int status;
    std::string output;
};

class Board : public testing::Test {
protected:
    // In a tree of files: for a test that hands them to real commands.
    enum class Files { in_memory, in_tree };
    explicit Board(Files files = Files::in_memory);
    ~Board() override;
    void TearDown() override;

    static board::State& host() { return board::state(); }

    // The journal from the start or from the last clear_journal(), or its lines that start so.
    Lines journal(std::string_view start = "");
    Lines commands() { return journal("$"); }
    void clear_journal();

    // Answers one exact command text; on_command answers those without, else 0 and no output.
    void answer(std::string command, Answer with) {
        answers_[std::move(command)] = std::move(with);
    }
    std::function<Answer(const std::string& command)> on_command;

    // Answers the library's ioctls by request number; what they return is ioctl's result. Without
    // an answer a request fails, but SIOCGIFINDEX knows the board's interfaces.
    std::map<unsigned long, std::function<int(void* request)>> on_ioctl;

    std::function<void()> on_pause;  // instead of time passing

    bool journal_sockets = false;  // "socket" and "close" then stand in the journal

    // Makes the library's nth call from now fail: of a function that Hooks lets fail, malloc
    // standing for calloc too, system2 for system3; a failing system2 ran its command.
    // failures_left(): the calls up to that one, 0 once it took place. With EINTR as its error the
    // call is one that a signal interrupts, with half of a line or of the bytes handed over.
    void fail_nth(const std::string& function, int n, int error = EIO) {
        failures_[function] = {n, error};
    }
    int failures_left(const std::string& function) const { return failures_.at(function).left; }
    void fail_no_more() { failures_.clear(); }

    board::Memory memory;

    // What the library reads in a file that is not in the memory; null: there is none.
    std::function<const std::string*(std::string_view path)> other_file;

    // Files of the board, by board path. A missing file reads as "(none)".
    void write(std::string_view path, std::string_view text);
    std::string read(std::string_view path) const;
    void remove(std::string_view path);
    void write_l1profile(std::string_view text) { write(kL1ProfilePath, text); }

    // The messages that journal() has not shown, as they were printed; it goes on without them.
    std::string out() { return take("out "); }
    std::string err() { return take("err "); }

    // What it wrote to commands since the last time.
    Lines inputs() { return std::exchange(inputs_, {}); }

    void expect_all_given_back() const;

    void forget();  // the journal, messages and inputs

    int64_t now = 1'700'000'000;  // what the library's clock shows, in seconds since the epoch

private:
    friend struct Hooks;

    // A line of the journal whose text may be several: a command, a message.
    struct Noted {
        std::string line;
        bool shown = false;
    };
    void note_text(std::string line);
    std::string take(std::string_view mark);
    Answer run(const std::string& mark, const std::string& command);
    bool fails(const std::string& function);

    std::map<std::string, Answer> answers_;
    struct Failure {
        int left;  // calls up to the failing one
        int error;
    };
    std::map<std::string, Failure> failures_;
    std::set<FILE*> broken_;  // the streams of which ferror() is true
    std::vector<Noted> noted_;
    struct Pipe {
        bool writes;
        std::string text;
        int descriptor;
    };
    std::map<FILE*, Pipe> pipes_;
    std::map<int, bool> descriptors_;  // of sockets and pipes; whether they close on exec
    std::set<int> files_;
    std::set<FILE*> streams_;
    std::set<void*> blocks_;
    Lines inputs_;
    FILE* out_;
    FILE* err_;
    std::vector<std::unique_ptr<LibraryHook>> hooks_;
};

}  // namespace harness
