// UUID texts and hexadecimal bytes.
#include "fuzz/target.h"
#include "platform/wps.h"

using namespace fuzz_target;

void fuzz(Pieces& input) {
    Exact text(input.text());
    Output<uint8_t[16]> uuid;
    const int result = trans_uuid_str_to_hex(text.c_str(), *uuid.get());
    CLAIM(result == 0 || (result == -1 && uuid.untouched()));
    const int value = convert_2byte_hex(text.c_str());
    CLAIM(value >= 0 && value <= 0xFF);
}
