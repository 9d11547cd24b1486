#include "src/wlmap/l1profile.h"

#include "src/host/host.h"
#include "src/host/host_buffer.h"
#include "src/support/key_line.h"
#include "src/support/message.h"
#include "src/support/stream.h"
#include "src/support/text.h"

namespace platform {
namespace {

constexpr const char* kIndexFile = "/etc/wireless/l1profile.dat";
constexpr size_t kLineSize = 256;  // a longer line reads as several

}  // namespace

bool l1profile_get(std::string_view key, std::span<char> value) {
    File file(open_for_reading(kIndexFile));
    char buffer[kLineSize];
    while (const auto line = file.read_line(buffer)) {
        const auto found = value_in_line(*line, key);
        if (!found) continue;
        copy_text(value, *found);
        return true;
    }
    if (file.failed()) {
        print_out("ERROR: L1PROFILE not found\n");
        syslog_msg(1, "ERROR: L1PROFILE not found\n");
    }
    return false;
}

int l1profile_get_index_value(int32_t radio, std::string_view name, std::span<char> value) {
    char key[32];
    Text prefix(key);
    prefix.put("INDEX").put_decimal(radio).put('_');
    copy_text(std::span(key).subspan(prefix.size()), name);
    HostBuffer<char[kL1ValueSize]> found;
    const int result = genconfig_get_value_direct(kIndexFile, key, found.block);
    if (result != -1) copy_text(value, field_text(found.block));
    return result;
}

}  // namespace platform
