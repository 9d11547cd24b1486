#include <signal.h>
#include <string_view>

#include "platform/flash.h"
#include "src/flash/uboot_env.h"
#include "src/host/host.h"
#include "src/support/command.h"
#include "src/support/message.h"
#include "src/support/split.h"

using namespace platform;

namespace {

constexpr const char* kDiagCache = "/tmp/diag_flag";
constexpr size_t kRestoreSize = 4096 + 128;  // the longest path and the command

// Only the first "=" parts name and value.
void set_pair(std::string_view pair) {
    const size_t equals = pair.find('=');
    if (equals == std::string_view::npos) return;
    set_uboot_env({pair.data(), equals}, {pair.data() + equals + 1, pair.size() - equals - 1});
}

int remember_diag_flag(const char* text, int flag) {
    write_file(kDiagCache, text);
    return flag;
}

}  // namespace

int get_bootconfig(const char* name, char* value, int size) {
    return get_uboot_env(name, value, size);
}

int set_bootconfig(const char* action, const char* argument) {
    const std::string_view verb = text_of(action);
    if (verb == "default") {
        print_out("set_bootconfig default action is not defined in this platform\n");
        return 0;
    }
    if (verb != "set" || argument == nullptr) return 0;

    for (Split pairs(argument, '&'); const auto pair = pairs.next();) set_pair(*pair);
    return 0;
}

int check_diag_flag() {
    if (file_exists(kDiagCache)) return get_file_value(kDiagCache, 1);

    char value[128];
    if (!get_uboot_env("diag", value, sizeof value)) {
        print_error("Can't get diag flag\n");
        return 1;
    }
    return std::string_view(value) == "0" ? remember_diag_flag("0", 0) : remember_diag_flag("1", 1);
}

int write_diag_flag() {
    return set_uboot_env("diag", "1");
}

int clear_diag_flag() {
    return set_uboot_env("diag", "0");
}

int check_ated_flag() {
    char value[32];
    return get_bootconfig("ftm", value, sizeof value) && std::string_view(value) == "on";
}

int set_ated_flag() {
    return set_uboot_env("ftm", "on");
}

int send_system_reboot_signal() {
    kill(1, SIGTERM);
    return 0;
}

int restore_backup_config(const char* path) {
    if (text_of(path).empty() || *path == '-') return -1;  // "-" begins an option of the tool
    return run_shell(Command<kRestoreSize>("/sbin/restorebackup %s", path)) == 0 ? 0 : -1;
}
