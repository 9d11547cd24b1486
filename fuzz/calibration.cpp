// A calibration image over what the partition holds, with any places of the radios' data. Image and
// partition are the same bytes here, so only an image of the listed size is one.
#include "fuzz/target.h"
#include "platform/flash.h"

using namespace fuzz_target;

void fuzz(Pieces& input) {
    outside().index = input.next();
    outside().text = input.next();
    outside().device = input.rest();
    constexpr uint32_t kLargest = 1 << 16;  // an image of more takes long and shows nothing new
    const uint32_t size = mtd_get_size("Factory");
    if (size > kLargest) return;
    check_eeprom();
    const size_t before = outside().commands.size();
    const bool installed = install_eeprom(nullptr) == 0;
    CLAIM(installed == (size != 0 && outside().device.size() == size));
    CLAIM(outside().commands.size() == before + (installed ? 1 : 0));
    extract_eeprom();
}
