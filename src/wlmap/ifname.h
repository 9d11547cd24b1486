// Names of network interfaces, each a copy of our own.
//
// The lookups of platform/wlmap.h answer in static buffers that the next one overwrites: inside the
// library only this type calls them. Each use reads the radio index file once.
#pragma once

#include "platform/records.h"
#include "platform/wlmap.h"
#include "src/host/radios.h"
#include "src/support/text.h"

namespace platform {

class IfName : public TextCopy<PLATFORM_IFNAME_SIZE> {
public:
    using TextCopy::TextCopy;

    static IfName main(int32_t wl_mode) { return IfName(get_wl_ifname_by_wlmode(wl_mode)); }
    static IfName client(int32_t wl_mode) {
        return IfName(get_wl_bridge_ifname_by_wlmode(wl_mode));
    }
    static IfName bss(int32_t wl_mode, int32_t number) {
        return IfName(get_wl_ifname(wl_index_of(wl_mode, number)));
    }
};

}  // namespace platform
