// board-run: starts the library on a virtual board and shows what happens.
#include <dlfcn.h>
#include <signal.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include "host/radio.h"
#include "host/state_file.h"
#include "run/capture.h"
#include "run/power_on.h"
#include "run/session.h"
#include "tree/enter.h"
#include "tree/make_tree.h"

namespace board::run {
namespace {

namespace fs = std::filesystem;

struct Options {
    std::string board;  // empty: a fresh one, removed at the end
    std::string config;
    std::string library;
};

std::optional<Options> parse(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--board" && i + 1 < argc)
            options.board = argv[++i];
        else if (word == "--config" && i + 1 < argc)
            options.config = argv[++i];
        else if (options.library.empty() && !word.starts_with("-"))
            options.library = word;
        else
            return std::nullopt;
    }
    if (options.library.empty()) return std::nullopt;
    return options;
}

// A board that is kept when its owner named the directory.
class Board {
public:
    explicit Board(const std::string& named) : kept_(!named.empty()) {
        directory_ = kept_ ? fs::absolute(named) : temporary();
        if (is_tree(directory_))
            power_on(directory_);
        else
            make_tree(directory_, FactoryData::erased);
    }
    ~Board() {
        std::error_code ignored;
        if (!kept_) fs::remove_all(directory_, ignored);
    }
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;

    const fs::path& directory() const { return directory_; }

private:
    static fs::path temporary() {
        std::string name = fs::temp_directory_path() / "board.XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
        return name;
    }

    bool kept_;
    fs::path directory_;
};

// The host's functions are already there: this program is linked with libboardhost.so.
Platform load(const std::string& path) {
    Platform platform{};
    platform.library = ::dlopen(fs::absolute(path).c_str(), RTLD_NOW);
    if (platform.library == nullptr) throw std::runtime_error(::dlerror());
    platform.set_ftm_cache = platform.find<int()>("set_ftm_cache");
    platform.platform_init_wireless = platform.find<int()>("platform_init_wireless");
    platform.platform_set_wireless =
        platform.find<int(const wireless_conf*, const char*)>("platform_set_wireless");
    return platform;
}

bool is_radio(int32_t wl_mode) {
    return find_radio(wl_mode) != nullptr;
}

bool is_possible(const State& configured) {
    const auto& wl_modes = configured.wl_modes;
    const auto& radios = configured.radios;
    return std::all_of(wl_modes.begin(), wl_modes.end(), is_radio) &&
           std::all_of(radios.begin(), radios.end(), [](const Radio& radio) {
               return radio.bss_count >= 0 && radio.bss_count <= PLATFORM_BSS_MAX;
           });
}

void configure(const std::string& path) {
    const auto complaints = load_state(state(), path);
    for (const std::string& complaint : complaints)
        std::fprintf(stderr, "board-run: %s\n", complaint.c_str());
    if (!complaints.empty() || !is_possible(state()))
        throw std::runtime_error("this configuration does not fit the board");
}

// Ctrl-C and a closed pipe end the work on the board; this process stays to clean up.
void handle_interruptions(void (*handler)(int)) {
    for (const int signal : {SIGINT, SIGPIPE}) ::signal(signal, handler);
}

int run(const Options& options) {
    handle_interruptions(SIG_IGN);
    const Board board(options.board);
    const fs::path& directory = board.directory();
    configure(options.config.empty() ? directory / "etc/board.conf" : fs::path(options.config));
    const Platform platform = load(options.library);
    std::printf("Board in %s\n", directory.c_str());

    Capture capture;
    const auto live = [&](int (*life)(const Platform&, Capture&)) {
        return enter(directory, [&] {
            handle_interruptions(SIG_DFL);
            return life(platform, capture);
        });
    };
    int status = live(run_first_start);
    if (status == 0) {
        std::printf("\nPower off, power on\n");
        power_on(directory);
        status = live(run_session);
    }
    // What a step printed that never came to its end, such as a sanitizer's report.
    std::fputs(capture.take().c_str(), stderr);
    if (status > 128) std::fprintf(stderr, "board-run: ended by signal %d\n", status - 128);
    return status;
}

}  // namespace
}  // namespace board::run

int main(int argc, char** argv) {
    const auto options = board::run::parse(argc, argv);
    if (!options) {
        std::fputs("Usage: board-run [--board DIR] [--config FILE] path/to/libplatform.so\n",
                   stderr);
        return 2;
    }
    try {
        return board::run::run(*options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "board-run: %s\n", error.what());
        return 1;
    }
}
