#include "src/flash/uboot_env.h"

#include <string.h>

#include "src/host/host.h"
#include "src/support/command.h"
#include "src/support/stream.h"

namespace platform {

int get_uboot_env(const char* name, char* destination, int size) {
    if (destination == nullptr || size < 1) return 0;

    const std::span<char> room(destination, static_cast<size_t>(size));
    memset(room.data(), 0, room.size());
    if (text_of(name).empty() || *name == '-') return 0;  // "-" begins an option of the tool
    Pipe tool(open_command_output(Command<256>("/sbin/uboot_env -g %s", name).text()));
    const auto line = tool.read_line(room);
    const size_t length = line && !tool.failed() ? line->size() : 0;
    memset(room.data() + length, 0, room.size() - length);
    if (tool.failed()) return 0;
    trim_crcf(destination);
    return 1;
}

int set_uboot_env(std::string_view name, std::string_view value) {
    if (name.starts_with('-')) return 0;  // as above
    run_shell(Command<256>("/sbin/uboot_env -s %s=%s | /sbin/mtd write - Config", name, value));
    return 0;
}

}  // namespace platform
