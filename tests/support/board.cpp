#include "support/board.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>

#include "live/journal.h"
#include "live/tree.h"

namespace harness {
namespace {

Board* current = nullptr;

[[gnu::format(printf, 1, 0)]] std::string format_text(const char* format, va_list arguments) {
    char* text = nullptr;
    if (vasprintf(&text, format, arguments) < 0) std::abort();
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    return text;
}

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
        va_list arguments;
        va_start(arguments, format);
        const std::string command = format_text(format, arguments);
        va_end(arguments);
        return current->run("$2", command).status;
    }

    [[gnu::format(printf, 1, 2)]] static int system3(const char* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        const std::string command = format_text(format, arguments);
        va_end(arguments);
        return current->run("$3", command).status;
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

    static int open(const char* path, int flags, ...) {
        if (current->fails("open")) return -1;
        va_list arguments;
        va_start(arguments, flags);
        const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
        va_end(arguments);
        const int fd = ::open(board::in_tree(path).c_str(), flags, mode);
        if (fd >= 0) expect_close_on_exec(fd, path);
        return fd;
    }

    static int mkdir(const char* path, mode_t mode) {
        return current->fails("mkdir") ? -1 : ::mkdir(board::in_tree(path).c_str(), mode);
    }

    static void* malloc(size_t size) {
        return current->fails("malloc") ? nullptr : std::malloc(size);
    }

    static void* calloc(size_t count, size_t size) {
        return current->fails("calloc") ? nullptr : std::calloc(count, size);
    }

    static void* realloc(void* block, size_t size) {
        return current->fails("realloc") ? nullptr : std::realloc(block, size);
    }

    static unsigned sleep(unsigned seconds) {
        board::journal({"sleep", std::to_string(seconds)});
        return 0;
    }

    static int usleep(useconds_t microseconds) {
        board::journal({"usleep", std::to_string(microseconds)});
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
    for (const char* directory :
         {"/etc/wireless", "/proc", "/dev", "/lib/firmware", "/tmp", "/var/run"})
        board::make_directories(directory);
    board::create_interfaces(board::state());
    write_l1profile(kL1Profile);

    const auto divert = [this](const char* name, auto* replacement) {
        hooks_.push_back(std::make_unique<LibraryHook>(name, replacement));
    };
    divert("stdout", out_.stream());
    divert("stderr", err_.stream());
    divert("system", Hooks::system);
    divert("system2", Hooks::system2);
    divert("system3", Hooks::system3);
    divert("popen", Hooks::popen);
    divert("pclose", Hooks::pclose);
    divert("fopen", Hooks::fopen);
    divert("open", Hooks::open);
    divert("mkdir", Hooks::mkdir);
    divert("malloc", Hooks::malloc);
    divert("calloc", Hooks::calloc);
    divert("realloc", Hooks::realloc);
    divert("sleep", Hooks::sleep);
    divert("usleep", Hooks::usleep);
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

bool Board::exists(std::string_view path) const {
    return board::path_exists(path);
}

void Board::remove(std::string_view path) {
    std::filesystem::remove_all(board::in_tree(path));
}

void Board::write_l1profile(std::string_view text) {
    write(kL1ProfilePath, text);
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
    errno = function.ends_with("alloc") ? ENOMEM : EIO;
    return true;
}

}  // namespace harness
