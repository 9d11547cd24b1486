#include "wlmap/l1profile.h"

#include "frame/host.h"
#include "support/message.h"
#include "support/stream.h"
#include "support/text.h"

namespace platform {
namespace {

constexpr const char* kPath = "/etc/wireless/l1profile.dat";
constexpr size_t kLineSize = 256;  // a longer line reads as several

// The value when the line sets the key. The key is exact: no blank is trimmed on either side, and
// a comment begins with no key.
std::optional<std::string_view> value_in_line(std::string_view line, std::string_view key) {
    if (!has_prefix(line, key)) return {};
    line.remove_prefix(key.size());
    if (!line.starts_with('=')) return {};
    line.remove_prefix(1);
    if (line.ends_with('\n')) line.remove_suffix(1);
    return line;
}

}  // namespace

bool l1profile_get(std::string_view key, std::span<char> value) {
    File file(open_for_reading(kPath));
    if (!file.ok()) {
        print_out("ERROR: L1PROFILE not found\n");
        syslog_msg(1, "ERROR: L1PROFILE not found\n");
        return false;
    }
    char buffer[kLineSize];
    while (const auto line = file.read_line(buffer)) {
        const auto found = value_in_line(*line, key);
        if (!found) continue;
        copy_text(value, *found);
        return true;
    }
    return false;
}

int l1profile_get_index_value(int32_t radio, std::string_view name, char* value) {
    char key[32];
    Text prefix(key);
    prefix.put("INDEX").put_decimal(radio).put('_');
    copy_text(std::span(key).subspan(prefix.size()), name);
    return genconfig_get_value_direct(kPath, key, value);
}

}  // namespace platform
