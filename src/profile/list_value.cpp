#include "src/profile/list_value.h"

namespace platform {
namespace {

constinit char repeated[128];

}  // namespace

const char* repeat_int_list(int32_t value, int count) {
    Text list(repeated);
    for (int i = 0; i < count; ++i) list.put_decimal(value).put(';');
    return repeated;
}

}  // namespace platform
