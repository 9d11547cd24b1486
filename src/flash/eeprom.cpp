#include <fcntl.h>
#include <string.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "platform/flash.h"
#include "src/support/descriptor.h"
#include "src/support/heap.h"
#include "src/support/message.h"
#include "src/support/number.h"
#include "src/support/stream.h"
#include "src/support/text.h"
#include "src/support/tokens.h"
#include "src/wlmap/l1profile.h"

using namespace platform;

namespace {

constexpr const char* kPartition = "Factory";
constexpr const char* kDefaultImage = "/etc_ro/wlan/MT7615_EEPROM.bin";
constexpr int32_t kRadios = 2;
constexpr uint32_t kDriverFileLimit = 65536;
constexpr uint32_t kRadioImageSize = 1024;  // MT7615 family
constexpr size_t kDriverPathSize = 32;

// What tells a radio's image from erased flash.
struct ImageHead {
    uint8_t bytes[4] = {};
};

bool is_erased(const ImageHead& head) {
    const auto all = [&head](uint8_t value) {
        return std::all_of(std::begin(head.bytes), std::end(head.bytes),
                           [value](uint8_t byte) { return byte == value; });
    };
    return all(0x00) || all(0xFF);
}

// Where the radio's image starts in the partition; the index file may not say.
std::optional<uint32_t> image_offset(int32_t radio) {
    char value[kL1ValueSize] = {};
    if (l1profile_get_index_value(radio, "EEPROM_offset", value) == -1) return {};
    value[sizeof value - 1] = '\0';
    return hex_number(Tokens(value).next().value_or(std::string_view()));
}

ImageHead head_in_flash(uint32_t offset) {
    ImageHead head;
    if (offset <= INT32_MAX)
        mtd_readbuf(head.bytes, static_cast<int>(offset), sizeof head.bytes, kPartition);
    return head;
}

// A file's bytes at the start of a buffer of the partition's size.
struct Image {
    uint8_t* bytes;
    uint32_t size;
    uint32_t room;
};

bool brings_good_data(const Image& image, uint32_t offset) {
    if (offset + kRadioImageSize > image.size) return false;
    ImageHead head;
    memcpy(head.bytes, image.bytes + offset, sizeof head.bytes);
    return !is_erased(head);
}

// An unreadable place may hold good data, so it counts as good.
bool may_hold_good_data(uint32_t offset) {
    ImageHead head;
    const int count =
        mtd_readbuf(head.bytes, static_cast<int>(offset), sizeof head.bytes, kPartition);
    return count < 0 || !is_erased(head);
}

// Whether a radio would lose calibration data that the image does not replace whole.
bool spoils_a_radio(const Image& image) {
    for (int32_t radio = 0; radio < kRadios; ++radio) {
        const auto offset = image_offset(radio);
        if (!offset || *offset >= image.size) continue;
        if (!brings_good_data(image, *offset) && may_hold_good_data(*offset)) return true;
    }
    return false;
}

// Behind a smaller image the partition keeps its content.
bool fill_up(const Image& image) {
    const int missing = static_cast<int>(image.room - image.size);
    return mtd_readbuf(image.bytes + image.size, static_cast<int>(image.size), missing,
                       kPartition) == missing;
}

// An image of the partition's size replaces everything, whatever it and the flash hold: only so
// does a radio without data get them back from an image that has none for the other radio.
bool complete(const Image& image) {
    return image.size == image.room || (fill_up(image) && !spoils_a_radio(image));
}

int refuse(const char* path) {
    print_out("Invalid EEPROM file size: %s\n", path);
    return -1;
}

// "/lib/firmware/<name>" of the first radio; false when there is no such plain and short name.
bool form_driver_path(Text& path) {
    char name[kL1ValueSize] = {};
    const bool known = l1profile_get_index_value(0, "EEPROM_name", name) != -1;
    name[sizeof name - 1] = '\0';
    const std::string_view plain = name;
    path.put("/lib/firmware/").put(plain);
    return known && !plain.empty() && plain.find('/') == std::string_view::npos &&
           path.size() < kDriverPathSize;
}

// An existing file is emptied for new content only.
FILE* open_driver_file(const char* path, bool has_content) {
    if (path == nullptr) return nullptr;
    if (has_content) return open_for_writing(path);
    return open_for_appending(path);
}

}  // namespace

int check_eeprom() {
    for (int32_t radio = 0; radio < kRadios; ++radio) {
        const auto offset = image_offset(radio);
        if (!offset || is_erased(head_in_flash(*offset))) return -1;
    }
    return 0;
}

int install_eeprom(const char* path) {
    if (path == nullptr) path = kDefaultImage;

    const uint32_t listed = mtd_get_size(kPartition);
    const uint32_t room = listed <= INT32_MAX ? listed : 0;  // mtd_writebuf() takes an int
    // Nonblocking, because opening a FIFO would wait for its writer.
    const Descriptor source(open_file(path, O_RDONLY | O_NONBLOCK));
    if (!source.ok()) {
        print_out("EEPROM source file not found: %s\n", path);
        return -1;
    }
    const off_t size = source.size();
    if (size <= 0 || size > off_t{room}) return refuse(path);
    const Heap<uint8_t> bytes(room);
    if (!bytes.ok()) return -1;

    const Image image = {bytes.get(), static_cast<uint32_t>(size), room};
    if (source.read_all(image.bytes, image.size) != size || !complete(image)) return refuse(path);
    mtd_writebuf(image.bytes, 0, static_cast<int>(room), kPartition);
    print_out("Install Completed: %s\n", path);
    return 0;
}

int extract_eeprom() {
    const uint32_t size = std::min(mtd_get_size(kPartition), kDriverFileLimit);
    const Heap<uint8_t> image(std::max(size, uint32_t{1}));
    TextBuffer<2 * kL1ValueSize> path;
    const bool named = form_driver_path(path);
    if (!image.ok()) return -1;

    const int count = mtd_readbuf(image.get(), 0, static_cast<int>(size), kPartition);
    File file(open_driver_file(named ? path.c_str() : nullptr, count > 0));
    if (!file.ok()) {
        print_out("Can't open %s\n", path.c_str());
        return -1;
    }
    if (count <= 0 || file.write(image.get(), static_cast<size_t>(count))) return 0;
    remove_file(path.c_str());
    return -1;
}
