#include <fcntl.h>
#include <string.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "platform/flash.h"
#include "support/descriptor.h"
#include "support/heap.h"
#include "support/message.h"
#include "support/number.h"
#include "support/stream.h"
#include "support/text.h"
#include "support/tokens.h"
#include "wlmap/l1profile.h"

using namespace platform;

namespace {

constexpr const char* kPartition = "Factory";
constexpr const char* kDefaultImage = "/etc_ro/wlan/MT7615_EEPROM.bin";
constexpr int32_t kRadios = 2;
constexpr uint32_t kDriverFileLimit = 65536;
constexpr uint32_t kLargestPartition = 16 << 20;
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

// A file's bytes, and the room that the partition has for them.
struct Image {
    uint8_t* bytes;
    uint32_t size;
    uint32_t room;
};

bool brings_good_data(const Image& image, uint32_t offset) {
    if (image.size < image.room && offset + kRadioImageSize > image.size) return false;
    ImageHead head;
    memcpy(head.bytes, image.bytes + offset, sizeof head.bytes);
    return !is_erased(head);
}

// What cannot be read may well be good.
bool may_hold_good_data(uint32_t offset) {
    ImageHead head;
    const int count =
        mtd_readbuf(head.bytes, static_cast<int>(offset), sizeof head.bytes, kPartition);
    return count != sizeof head.bytes || !is_erased(head);
}

// Whether a radio would lose calibration data that the image does not replace whole.
bool spoils_a_radio(const Image& image) {
    for (int32_t radio = 0; radio < kRadios; ++radio) {
        const auto offset = image_offset(radio);
        if (!offset || *offset >= image.size || *offset + sizeof(ImageHead) > image.room) continue;
        if (!brings_good_data(image, *offset) && may_hold_good_data(*offset)) return true;
    }
    return false;
}

// Behind a smaller image the partition keeps its content.
bool fill_up(const Image& image) {
    const int missing = static_cast<int>(image.room - image.size);
    return missing == 0 || mtd_readbuf(image.bytes + image.size, static_cast<int>(image.size),
                                       missing, kPartition) == missing;
}

bool suits(const Image& image) {
    return image.size > 0 && image.size <= image.room && !spoils_a_radio(image) && fill_up(image);
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
    const uint32_t size = listed <= kLargestPartition ? listed : 0;
    const Descriptor source(open_file(path, O_RDONLY));
    if (!source.ok()) {
        print_out("EEPROM source file not found: %s\n", path);
        return -1;
    }
    // One byte more than fits shows a file that is too large.
    const Heap<uint8_t> bytes(size_t{size} + 1);
    if (!bytes.ok()) return -1;

    const ssize_t count = source.read_all(bytes.get(), size_t{size} + 1);
    const Image image = {bytes.get(), count > 0 ? static_cast<uint32_t>(count) : 0, size};
    if (!suits(image)) {
        print_out("Invalid EEPROM file size: %s\n", path);
        return -1;
    }
    mtd_writebuf(image.bytes, 0, static_cast<int>(size), kPartition);
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
    if (count <= 0) return -1;
    File file(named ? open_for_writing(path.c_str()) : nullptr);
    if (!file.ok()) {
        print_out("Can't open %s\n", path.c_str());
        return -1;
    }
    if (file.write(image.get(), static_cast<size_t>(count))) return 0;
    remove_file(path.c_str());
    return -1;
}
