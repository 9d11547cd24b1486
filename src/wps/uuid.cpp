#include <string_view>

#include "platform/wps.h"
#include "src/driver/object.h"
#include "src/support/number.h"
#include "src/support/split.h"
#include "src/support/text.h"

using namespace platform;

namespace {

constexpr int kGroups = 5;

}  // namespace

int wireless_get_wps_uuid(const char* ifname, uint8_t* uuid, uint32_t* length) {
    return wsc_get_oid(ifname, kOidWscUuid, uuid, length);
}

int wireless_set_wps_uuid(const char* ifname, const uint8_t* uuid, int length) {
    return wsc_set_oid(ifname, kOidWscUuid, uuid, length);
}

int trans_uuid_str_to_hex(const char* text, uint8_t uuid[16]) {
    constexpr size_t kTextLength = 127;
    if (text == nullptr || uuid == nullptr || strnlen(text, kTextLength + 1) > kTextLength)
        return -1;

    TextBuffer<kTextLength + 1> digits;
    Split groups(text, '-');
    for (int i = 0; i < kGroups; ++i) {
        const auto group = groups.next_filled();  // runs of "-" part two groups like one
        if (!group) return -1;
        digits.put(*group);
    }
    uint8_t bytes[16] = {};
    read_hex_pairs(digits.view(), bytes);
    memcpy(uuid, bytes, sizeof bytes);
    return 0;
}

int convert_2byte_hex(const char* text) {
    return static_cast<int>(leading_hex(text_of(text), 2).value_or(0));
}
