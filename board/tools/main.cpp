// All commands of the board in one program, which acts by the name that it is called with.
#include <unistd.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "board/store/journal.h"
#include "board/tools/tools.h"

namespace board::tools {
namespace {

struct Tool {
    std::string_view name;
    int (*run)(Words words);
    bool reads_input = false;
};

int bndstrg(Words) {
    return start_daemon("bndstrg");
}

int rt2860apd(Words) {
    return start_daemon("rt2860apd");
}

int rtinicapd(Words) {
    return start_daemon("rtinicapd");
}

constexpr Tool kTools[] = {
    {"ated",     ated    },
    {"bndstrg",  bndstrg },
    {"brctl",    brctl   },
    {"ebtables", ebtables},
    {"ifconfig", ifconfig},
    {"insmod",   insmod  },
    {"iptables", iptables},
    {"iwpriv",   iwpriv  },
    {"killall",  killall },
    {"led_ctl",  led_ctl },
    {"ls",       ls      },
    {"mtd",      mtd,      true},
    {"restorebackup",          restorebackup   },
    {"rt2860apd",          rt2860apd    },
    {"rtinicapd",          rtinicapd   },
    {"switch",          ethernet_switch       },
    {"uboot_env",          uboot_env},
};

std::string& input_storage() {
    static std::string* const text = new std::string;
    return *text;
}

void read_input() {
    char buffer[4096];
    for (ssize_t size; (size = ::read(STDIN_FILENO, buffer, sizeof buffer)) > 0;)
        input_storage().append(buffer, static_cast<size_t>(size));
}

int run(std::vector<std::string> words) {
    std::string& name = words.front();
    name.erase(0, name.rfind('/') + 1);
    for (const Tool& tool : kTools) {
        if (tool.name != name) continue;
        if (tool.reads_input) read_input();
        journal(words);
        return tool.run(Words(words).subspan(1));
    }
    return fail(127, name + " is not a command of this board");
}

}  // namespace

const std::string& standard_input() {
    return input_storage();
}

int fail(int status, const std::string& complaint) {
    std::fprintf(stderr, "%s\n", complaint.c_str());
    return status;
}

}  // namespace board::tools

int main(int argc, char** argv) {
    return board::tools::run({argv, argv + argc});
}
