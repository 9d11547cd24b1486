#include <fcntl.h>

#include <optional>
#include <span>
#include <string_view>

#include "platform/flash.h"
#include "src/support/command.h"
#include "src/support/descriptor.h"
#include "src/support/message.h"
#include "src/support/number.h"
#include "src/support/stream.h"
#include "src/support/text.h"
#include "src/support/tokens.h"

using namespace platform;

namespace {

constexpr const char* kTable = "/proc/mtd";
constexpr const char* kConfig = "Config";
constexpr size_t kNameSize = 32;
constexpr size_t kNameLength = 29;  // with its quotes it fits the search pattern
constexpr size_t kLineSize = 128;

// A name that begins with "-" would be an option of the mtd tool.
bool can_be_partition(std::string_view name) {
    return name.size() <= kNameLength && !name.starts_with('-');
}

// The first line of the table that holds the name in quotes. Nothing for what can be no name.
std::optional<std::string_view> find_partition(File& table, const char* name,
                                               std::span<char> line) {
    char device_name[kNameSize];
    if (!can_be_partition(text_of(name))) return {};
    get_kdx_devname(text_of(name).data(), device_name, sizeof device_name);
    TextBuffer<kNameSize> pattern;
    pattern.put('"').put(device_name).put('"');
    while (const auto text = table.read_line(line))
        if (text->find(pattern.view()) != std::string_view::npos) return text;
    return {};
}

// "/dev/mtd3" of the line "mtd3: 00040000 00010000 "Factory"".
bool form_device_path(std::string_view line, Text& path) {
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) return false;
    return path.put("/dev/").put(std::string_view(line.data(), colon)).ok();
}

}  // namespace

int get_kdx_devname(const char* source, char* destination, int size) {
    if (source != nullptr && destination != nullptr && size > 0)
        copy_text({destination, static_cast<size_t>(size)}, source);
    return 1;
}

int mtd_open(const char* name, int flags) {
    TextBuffer<kNameSize> path;
    {
        File table(open_for_reading(kTable));
        char line[kLineSize];
        const auto found = find_partition(table, name, line);
        if (!found || !form_device_path(*found, path)) return -1;
    }
    return open_file(path.c_str(), flags);
}

uint32_t mtd_get_size(const char* name) {
    File table(open_for_reading(kTable));
    char line[kLineSize];
    const auto found = find_partition(table, name, line);
    if (table.failed()) {
        print_error("%s Unable to open /proc/mtd\n", "find_mtd_size");
        return static_cast<uint32_t>(-1);
    }
    if (!found) return 0;
    Tokens fields(*found);
    fields.next();
    const auto size = fields.next();
    return size ? hex_number(*size) : 0;
}

int mtd_readbuf(void* buffer, int offset, int length, const char* name) {
    if (buffer == nullptr || length < 0) return -1;

    const Descriptor device(mtd_open(name, O_RDONLY));
    if (!device.ok()) {
        print_error("Could not open mtd device: %s\n", text_of(name).data());
        return -1;
    }
    const int count = static_cast<int>(device.read_at(offset, buffer, static_cast<size_t>(length)));
    if (count != length)
        print_error("mtd_readbuf error %s:offset:%08x, n=%d,len=%d\n", text_of(name).data(),
                    static_cast<unsigned>(offset), count, length);
    return count;
}

int mtd_writebuf(const void* buffer, int offset, int length, const char* name) {
    if (buffer == nullptr || offset < 0 || length < 0) return -1;
    if (text_of(name).empty() || !can_be_partition(name)) return -1;

    const Command<128> command("/sbin/mtd write - %s", name);
    Pipe tool(open_command_input(command.text()));
    if (!tool.ok()) {
        print_error("%s: Failed to execute:%s\n", "mtd_writebuf", text_of(command.text()).data());
        return -1;
    }
    tool.write(static_cast<const char*>(buffer) + offset, static_cast<size_t>(length));
    return 0;
}

uint32_t get_config_region_size() {
    return mtd_get_size(kConfig);
}

int read_config(void* buffer, int offset, int length) {
    return mtd_readbuf(buffer, offset, length, kConfig);
}

int write_config(const void* buffer, int length) {
    constexpr std::string_view kDefault = "DEFAULT";
    if (buffer == nullptr)
        return mtd_writebuf(kDefault.data(), 0, static_cast<int>(kDefault.size()), kConfig);
    return mtd_writebuf(buffer, 0, length, kConfig);
}
