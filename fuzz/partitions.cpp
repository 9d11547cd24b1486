// /proc/mtd and the partitions that it lists, by a name from outside.
#include "fuzz/target.h"
#include "platform/flash.h"

using namespace fuzz_target;

void fuzz(Pieces& input) {
    Exact name(input.text());
    outside().device = input.next();
    outside().text = input.rest();

    mtd_get_size(name.c_str());
    mtd_get_size(nullptr);
    get_config_region_size();
    Output<char[64]> bytes;
    const int count = mtd_readbuf(*bytes.get(), 3, sizeof *bytes.get(), name.c_str());
    CLAIM(count <= int{sizeof *bytes.get()});
    CLAIM(bytes.untouched(count < 0 ? 0 : static_cast<size_t>(count)));
    read_config(*bytes.get(), 0x7FFFFFFF, 1);
    mtd_writebuf("bytes", 1, 3, name.c_str());
    CLAIM(*name.c_str() != '-' || outside().commands.empty());

    Output<char[16]> device_name;
    get_kdx_devname(name.c_str(), *device_name.get(), sizeof *device_name.get());
    CLAIM(is_terminated(*device_name.get()));
}
