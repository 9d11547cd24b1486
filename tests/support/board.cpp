#include "tests/support/board.h"

#include <fcntl.h>
#include <linux/if.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "board/model/interfaces.h"
#include "board/store/journal.h"
#include "board/store/store.h"

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

std::string written_to(FILE* stream) {
    std::string text(static_cast<size_t>(std::ftell(stream)), '\0');
    std::rewind(stream);
    text.resize(std::fread(text.data(), 1, text.size(), stream));
    return text;
}

}  // namespace

std::string test_file(const std::string& name) {
    return TESTS_DIR "/" + name;
}

const char* const kL1Profile =
    "INDEX0_main_ifname=ra0\nINDEX0_ext_ifname=ra\nINDEX0_apcli_ifname=apcli\n"
    "INDEX0_profile_path=/etc/wireless/radio0.dat\n"
    "INDEX0_EEPROM_name=radio0.bin\nINDEX0_EEPROM_offset=0x0\n"
    "INDEX1_main_ifname=rai0\nINDEX1_ext_ifname=rai\nINDEX1_apcli_ifname=apclii\n"
    "INDEX1_profile_path=/etc/wireless/radio1.dat\nINDEX1_EEPROM_offset=0x8000\n";

// The library's way to the system, as it finds it on the board.
struct Hooks {
    static int system(const char* command) {
        if (current->fails("system")) return -1;
        return current->run("$", command).status;
    }

    // system2 and system3 of the host.
    template <char kNumber>
    [[gnu::format(printf, 1, 2)]] static int run_host(const char* format, ...) {
        char command[8192];
        va_list arguments;
        va_start(arguments, format);
        EXPECT_LT(vsnprintf(command, sizeof command, format, arguments), int{sizeof command});
        va_end(arguments);
        constexpr char kMark[] = {'$', kNumber, '\0'};
        const int status = current->run(kMark, command).status;
        return current->fails("system2") ? 1 : status;
    }

    static FILE* popen(const char* command, const char* mode) {
        if (current->fails("popen")) return nullptr;
        const bool writes = *mode == 'w';
        const std::string output = current->run(writes ? "$>" : "$<", command).output;
        FILE* const pipe = fdopen(memfd_create("pipe", 0), "r+");
        if (!writes) std::fwrite(output.data(), 1, output.size(), pipe);
        std::rewind(pipe);
        current->pipes_.emplace(pipe, writes);
        return pipe;
    }

    static int pclose(FILE* pipe) {
        const bool failed = current->fails("pclose");
        current->broken_.erase(pipe);
        const auto row = current->pipes_.extract(pipe);
        EXPECT_TRUE(row) << "pclose of what popen did not open";
        expect_close_on_exec(fileno(pipe), "a pipe");
        if (row && row.mapped()) current->inputs_.push_back(written_to(pipe));
        return std::fclose(pipe) == 0 && !failed ? 0 : -1;
    }

    static FILE* fopen(const char* path, const char* mode) {
        if (current->fails("fopen")) return nullptr;
        FILE* const file = std::fopen(board::in_tree(path).c_str(), mode);
        if (file != nullptr) expect_close_on_exec(fileno(file), path);
        return file;
    }

    static int fclose(FILE* file) {
        const bool failed = current->fails("fclose");
        const int error = errno;
        current->broken_.erase(file);
        if (std::fclose(file) == 0 && !failed) return 0;
        errno = error;
        return EOF;
    }

    static size_t fwrite(const void* bytes, size_t size, size_t count, FILE* stream) {
        if (!current->fails("fwrite")) return std::fwrite(bytes, size, count, stream);
        current->broken_.insert(stream);
        return std::fwrite(bytes, size, count / 2, stream);
    }

    // A failing one has taken half of the line and leaves it without a NUL, as C libraries do.
    static char* fgets(char* line, int size, FILE* stream) {
        if (!current->fails("fgets")) return std::fgets(line, size, stream);
        const int error = errno;
        std::string half(static_cast<size_t>(size), '\0');
        const long start = std::ftell(stream);
        if (std::fgets(half.data(), size, stream) != nullptr) {
            half.resize(std::strlen(half.c_str()) / 2);
            std::fseek(stream, start + std::ssize(half), SEEK_SET);
            half.copy(line, half.size());
        }
        current->broken_.insert(stream);
        errno = error;
        return nullptr;
    }
    static int ferror(FILE* stream) {
        return current->broken_.contains(stream) ? 1 : std::ferror(stream);
    }
    static void clearerr(FILE* stream) {
        current->broken_.erase(stream);
        std::clearerr(stream);
    }

    static int open(const char* path, int flags, mode_t mode) {
        if (current->fails("open")) return -1;
        const int fd = ::open(board::in_tree(path).c_str(), flags, mode);
        if (fd != -1) expect_close_on_exec(fd, path);
        return fd;
    }

    static ssize_t read(int fd, void* bytes, size_t size) {
        return current->fails("read") ? -1 : ::read(fd, bytes, size);
    }

    static int lstat(const char* path, struct stat* entry) {
        return ::lstat(board::in_tree(path).c_str(), entry);
    }

    static int unlink(const char* path) { return ::unlink(board::in_tree(path).c_str()); }

    static int mkdir(const char* path, mode_t mode) {
        if (current->fails("mkdir")) return -1;
        char octal[16];
        std::snprintf(octal, sizeof octal, "%04o", mode);
        board::journal({"mkdir", path, octal});
        return ::mkdir(board::in_tree(path).c_str(), mode);
    }

    static int socket(int, int, int) {
        if (current->fails("socket")) return -1;
        if (current->journal_sockets) board::journal({"socket"});
        return *current->sockets_.insert(memfd_create("socket", 0)).first;
    }

    static int ioctl(int fd, unsigned long request, void* record) {
        EXPECT_TRUE(current->sockets_.contains(fd)) << "ioctl without a socket";
        if (current->fails("ioctl")) return -1;
        errno = ENODEV;
        if (const auto row = current->on_ioctl.find(request); row != current->on_ioctl.end())
            return row->second(record);
        const auto* const name = static_cast<const ifreq*>(record)->ifr_name;
        if (request != SIOCGIFINDEX) return -1;
        return board::interface_exists({name, strnlen(name, IFNAMSIZ)}) ? 0 : -1;
    }

    static off_t lseek(int fd, off_t offset, int whence) {
        return current->fails("lseek") ? -1 : ::lseek(fd, offset, whence);
    }

    static int close(int fd) {
        if (current->sockets_.erase(fd) != 0) {
            expect_close_on_exec(fd, "a socket");
            if (current->journal_sockets) board::journal({"close"});
        }
        return ::close(fd);
    }

    static void* malloc(size_t size) {
        if (current->fails("malloc")) return nullptr;
        return *current->memory_.insert(std::malloc(size)).first;
    }

    static void* calloc(size_t count, size_t size) {
        void* const memory = malloc(count * size);
        return memory != nullptr ? memset(memory, 0, count * size) : nullptr;
    }

    static void free(void* memory) {
        EXPECT_TRUE(memory == nullptr || current->memory_.erase(memory) != 0)
            << "free of what malloc did not give";
        std::free(memory);
    }

    static time_t time(time_t* now) {
        if (now != nullptr) *now = current->now;
        return current->now;
    }

    // Writes down what must not take place.
    template <class... Numbers>
    static int note(const char* word, Numbers... numbers) {
        board::journal({word, std::to_string(numbers)...});
        return 0;
    }
    // Interrupted, all of the time is left: the clock stands still.
    static int usleep(useconds_t microseconds) {
        if (current->fails("usleep")) return -1;
        if (current->on_pause) current->on_pause();
        return note("usleep", microseconds);
    }
    static unsigned sleep(unsigned seconds) {
        if (current->fails("sleep")) return seconds;
        if (current->on_pause) current->on_pause();
        return static_cast<unsigned>(note("sleep", seconds));
    }
    static int clock_gettime(clockid_t, timespec* now) {
        *now = {};
        return 0;
    }
    static int kill(pid_t process, int signal) { return note("kill", process, signal); }

    // Standard output or error: each print stands in the journal at once, behind the mark.
    static FILE* open_stream(const char* mark) {
        const auto print = [](void* cookie, const char* text, size_t size) {
            current->note_text(static_cast<const char*>(cookie) + std::string(text, size));
            return static_cast<ssize_t>(size);
        };
        FILE* const stream =
            fopencookie(const_cast<char*>(mark), "w", {nullptr, print, nullptr, nullptr});
        std::setvbuf(stream, nullptr, _IONBF, 0);
        return stream;
    }
};

Board::Board() : out_(Hooks::open_stream("out ")), err_(Hooks::open_stream("err ")) {
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
    divert("stdout", &out_);
    divert("stderr", &err_);
    divert("system2", Hooks::run_host<'2'>);
    divert("system3", Hooks::run_host<'3'>);
#define HOOK(function) std::pair(#function, reinterpret_cast<void*>(Hooks::function))
    for (const auto& [name, replacement] :
         {HOOK(system), HOOK(popen), HOOK(pclose), HOOK(fopen),    HOOK(fclose),
          HOOK(fwrite), HOOK(fgets), HOOK(ferror), HOOK(clearerr), HOOK(open),
          HOOK(lseek),  HOOK(read),  HOOK(lstat),  HOOK(unlink),   HOOK(mkdir),
          HOOK(socket), HOOK(ioctl), HOOK(close),  HOOK(malloc),   HOOK(calloc),
          HOOK(free),   HOOK(time),  HOOK(sleep),  HOOK(usleep),   HOOK(clock_gettime),
          HOOK(kill)})
        divert(name, static_cast<char*>(replacement));
#undef HOOK
}

Board::~Board() {
    hooks_.clear();
    std::fclose(out_);
    std::fclose(err_);
    std::filesystem::remove_all(board::root());
    board::set_root({});
    current = nullptr;
}

void Board::TearDown() {
    EXPECT_EQ("", out()) << "printed, and not looked at";
    EXPECT_EQ("", err()) << "printed, and not looked at";
    EXPECT_EQ(Lines{}, inputs()) << "written to a command, and not looked at";
    expect_all_given_back();
    for (const auto& [function, failure] : failures_)
        EXPECT_EQ(0, failure.left) << function << " was not called until its failure";
}

void Board::expect_all_given_back() const {
    EXPECT_TRUE(pipes_.empty()) << "a pipe was left open";
    EXPECT_TRUE(memory_.empty()) << "memory was not freed";
    EXPECT_EQ(descriptors_, open_descriptors()) << "a descriptor was left open";
    EXPECT_EQ(0, host().open_profiles);
    EXPECT_EQ(0, host().open_mac_tables);
    EXPECT_EQ(0, host().open_lists);
}

Lines Board::journal(std::string_view start) {
    Lines lines;
    for (const std::string& line : board::journal_lines()) {
        Noted of_host{line};
        auto& [text, shown] =
            line.starts_with("# ") ? noted_.at(std::stoul(line.substr(2))) : of_host;
        if (text.empty() || !text.starts_with(start)) continue;  // empty: taken
        shown = true;
        const bool message = !text.starts_with('$') && text.ends_with('\n');
        lines.push_back(text.substr(0, text.size() - (message ? 1 : 0)));
    }
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

// A line of the journal holds no more than one line of text, so it holds the number of ours.
void Board::note_text(std::string line) {
    board::journal({"#", std::to_string(noted_.size())});
    noted_.push_back({std::move(line)});
}

std::string Board::take(std::string_view mark) {
    std::string text;
    for (auto& [line, shown] : noted_)
        if (!shown && line.starts_with(mark)) text += std::exchange(line, "").substr(mark.size());
    return text;
}

Answer Board::run(const std::string& mark, const std::string& command) {
    note_text(mark + ' ' + command);
    if (const auto row = answers_.find(command); row != answers_.end()) return row->second;
    return on_command ? on_command(command) : Answer{};
}

bool Board::fails(const std::string& function) {
    const auto row = failures_.find(function);
    if (row == failures_.end() || row->second.left == 0 || --row->second.left > 0) return false;
    errno = function == "malloc" ? ENOMEM : row->second.error;
    return true;
}

}  // namespace harness
