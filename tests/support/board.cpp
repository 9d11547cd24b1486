#include "support/board.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <filesystem>

#include "live/journal.h"
#include "live/tree.h"

namespace harness {
namespace {

Board* current = nullptr;

size_t open_descriptors() {
    const std::filesystem::directory_iterator list("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(list), end(list)));
}

void expect_close_on_exec(int fd, const char* what) {
    EXPECT_TRUE(fcntl(fd, F_GETFD) & FD_CLOEXEC) << what << " is inherited by commands";
}

// In memory where there is a place for it: a tree for each test takes a disk longer than the test.
std::string make_root() {
    const bool in_memory = std::getenv("TEST_TMPDIR") == nullptr && access("/dev/shm", W_OK) == 0;
    std::string name = (in_memory ? "/dev/shm/" : testing::TempDir()) + "boardXXXXXX";
    if (mkdtemp(name.data()) == nullptr) std::abort();
    return name;
}

}  // namespace

const char* const kL1Profile =
    "INDEX0_main_ifname=ra0\nINDEX0_ext_ifname=ra\nINDEX0_apcli_ifname=apcli\n"
    "INDEX0_profile_path=/etc/wireless/radio0.dat\n"
    "INDEX0_EEPROM_name=radio0.bin\nINDEX0_EEPROM_offset=0x0\n"
    "INDEX1_main_ifname=rai0\nINDEX1_ext_ifname=rai\nINDEX1_apcli_ifname=apclii\n"
    "INDEX1_profile_path=/etc/wireless/radio1.dat\nINDEX1_EEPROM_offset=0x8000\n";

Output::~Output() {
    std::fclose(stream_);
    std::free(text_);
}

std::string Output::take() {
    std::fflush(stream_);
    std::string text(text_, size_);
    std::rewind(stream_);
    return text;
}

// The library's way to the system, as it finds it on the board.
struct Hooks {
    static int system(const char* command) {
        if (current->fails("system")) return -1;
        return current->run("$", command).status;
    }

    [[gnu::format(printf, 1, 2)]] static int system2(const char* format, ...) {
        char command[4096];
        va_list arguments;
        va_start(arguments, format);
        const int length = vsnprintf(command, sizeof command, format, arguments);
        va_end(arguments);
        EXPECT_LT(length, int{sizeof command});
        return current->run("$2", command).status;
    }

    static FILE* popen(const char* command, const char*) {
        if (current->fails("popen")) return nullptr;
        const std::string output = current->run("$<", command).output;
        FILE* const pipe = fdopen(memfd_create("pipe", 0), "r+");
        std::fwrite(output.data(), 1, output.size(), pipe);
        std::rewind(pipe);
        current->pipes_.insert(pipe);
        return pipe;
    }

    static int pclose(FILE* pipe) {
        EXPECT_EQ(1u, current->pipes_.erase(pipe)) << "pclose of what popen did not open";
        expect_close_on_exec(fileno(pipe), "a pipe");
        return std::fclose(pipe);
    }

    static FILE* fopen(const char* path, const char* mode) {
        if (current->fails("fopen")) return nullptr;
        FILE* const file = std::fopen(board::in_tree(path).c_str(), mode);
        if (file != nullptr) expect_close_on_exec(fileno(file), path);
        return file;
    }

    static void* malloc(size_t size) {
        return current->fails("malloc") ? nullptr : std::malloc(size);
    }

    static unsigned sleep(unsigned seconds) {
        board::journal({"sleep", std::to_string(seconds)});
        return 0;
    }

    static int kill(pid_t process, int signal) {
        board::journal({"kill", std::to_string(process), std::to_string(signal)});
        return 0;
    }
};

Board::Board() {
    current = this;
    descriptors_ = open_descriptors();
    board::set_root(make_root());
    board::state() = board::factory_state();
    for (const char* directory : {"/tmp", "/var/run"}) board::make_directories(directory);
    board::create_interfaces(board::state());
    write_l1profile(kL1Profile);

    // Whatever else of the C library comes to reach the system needs a hook here.
    const auto divert = [this](const char* name, auto* replacement) {
        hooks_.push_back(std::make_unique<LibraryHook>(name, replacement));
    };
    divert("stdout", out_.stream());
    divert("stderr", err_.stream());
    divert("system", Hooks::system);
    divert("system2", Hooks::system2);
    divert("popen", Hooks::popen);
    divert("pclose", Hooks::pclose);
    divert("fopen", Hooks::fopen);
    divert("malloc", Hooks::malloc);
    divert("sleep", Hooks::sleep);
    divert("kill", Hooks::kill);
}

Board::~Board() {
    hooks_.clear();
    std::filesystem::remove_all(board::root());
    board::set_root({});
    current = nullptr;
}

void Board::TearDown() {
    EXPECT_EQ("", out()) << "printed, and not looked at";
    EXPECT_EQ("", err()) << "printed, and not looked at";
    EXPECT_TRUE(pipes_.empty()) << "a pipe was left open";
    EXPECT_EQ(descriptors_, open_descriptors()) << "a descriptor was left open";
    EXPECT_EQ(0, host().open_profiles);
    EXPECT_EQ(0, host().open_mac_tables);
    EXPECT_EQ(0, host().open_lists);
    for (const auto& [function, calls] : failures_)
        EXPECT_EQ(0, calls) << function << " was not called until its failure";
}

Lines Board::journal() const {
    Lines lines = board::journal_lines();
    for (std::string& line : lines) {
        if (!line.starts_with('$')) continue;
        const size_t number = line.find(' ') + 1;
        line.replace(number, line.npos, command_texts_.at(std::stoul(line.substr(number))));
    }
    return lines;
}

Lines Board::commands() const {
    Lines lines = journal();
    std::erase_if(lines, [](const std::string& line) { return !line.starts_with('$'); });
    return lines;
}

void Board::clear_journal() {
    board::clear_journal();
}

void Board::write(std::string_view path, std::string_view text) {
    board::make_directories(path.substr(0, path.rfind('/')));
    if (!board::write_text(path, text)) std::abort();
}

std::string Board::read(std::string_view path) const {
    return board::read_text(path).value_or("(none)");
}

void Board::remove(std::string_view path) {
    std::filesystem::remove_all(board::in_tree(path));
}

// A line of the journal holds no more than one line of text, so it holds the command's number.
Answer Board::run(std::string_view mark, const std::string& command) {
    board::journal({mark, std::to_string(command_texts_.size())});
    command_texts_.push_back(command);
    if (const auto row = answers_.find(command); row != answers_.end()) return row->second;
    return on_command ? on_command(command) : Answer{};
}

bool Board::fails(const std::string& function) {
    const auto row = failures_.find(function);
    if (row == failures_.end() || row->second == 0 || --row->second > 0) return false;
    errno = function == "malloc" ? ENOMEM : EIO;
    return true;
}

}  // namespace harness
