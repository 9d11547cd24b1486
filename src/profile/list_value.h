// The value forms of the driver's profile keys.
#pragma once

#include <stdint.h>

#include <string_view>

#include "src/support/text.h"

namespace platform {

// One entry for each BSS: a single entry stands alone, several are each followed by ";".
template <size_t kSize = 1024>
class PlainList : public TextBuffer<kSize> {
public:
    explicit PlainList(int bss_count) : separator_(bss_count == 1 ? "" : ";") {}
    void add(std::string_view entry) { this->put(entry).put(separator_); }
    void add(int32_t entry) { this->put_decimal(entry).put(separator_); }

private:
    std::string_view separator_;
};

// The name of one BSS's own key, such as "SSID1".
class NumberedKey : public TextBuffer<32> {
public:
    NumberedKey(std::string_view name, int number) { put(name).put_decimal(number); }
};

// The value and ";" for each BSS, in a static buffer that holds until the next call; empty for a
// count below 1.
const char* repeat_int_list(int32_t value, int count);

}  // namespace platform
