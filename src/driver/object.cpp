#include "src/driver/object.h"

#include <linux/sockios.h>
#include <linux/wireless.h>
#include <string.h>

#include <algorithm>
#include <string_view>

#include "src/support/descriptor.h"
#include "src/support/heap.h"
#include "src/support/text.h"

using namespace platform;

namespace {

// Private requests of the Linux wireless extensions, as the mt_wifi driver numbers them.
constexpr unsigned long kObjectRequest = SIOCIWFIRSTPRIV + 1;
constexpr unsigned long kSurveyRequest = SIOCIWFIRSTPRIV + 13;
constexpr uint16_t kSetFlag = 0x8000;

static_assert(kObjectRequest == 0x8BE1 && kSurveyRequest == 0x8BED);
static_assert(sizeof(iwreq) == 32);
static_assert(offsetof(iwreq, u.data.pointer) == 16);
static_assert(offsetof(iwreq, u.data.length) == 24);
static_assert(offsetof(iwreq, u.data.flags) == 26);

// The kernel's name field: a name of 16 and more characters fills it without a terminator.
template <size_t kSize>
void put_ifname(const char* ifname, char (&field)[kSize]) {
    const std::string_view name = text_of(ifname);
    memcpy(field, name.data(), std::min(name.size(), kSize));
}

// A socket for the driver's requests; none when there is no such interface.
Descriptor wsc_open_ifname_socket(const char* ifname) {
    Descriptor descriptor(open_control_socket());
    if (!descriptor.ok()) return descriptor;
    ifreq request = {};
    put_ifname(ifname, request.ifr_name);
    if (control(descriptor.get(), SIOCGIFINDEX, &request) < 0) return Descriptor();
    return descriptor;
}

iwreq object_request(const char* ifname, void* data, uint16_t length, uint16_t flags) {
    iwreq request = {};
    put_ifname(ifname, request.ifr_ifrn.ifrn_name);
    request.u.data.pointer = data;
    request.u.data.length = length;
    request.u.data.flags = flags;
    return request;
}

}  // namespace

int wsc_set_oid(const char* ifname, uint16_t oid, const void* payload, int length) {
    const Descriptor driver = wsc_open_ifname_socket(ifname);
    if (!driver.ok() || length < 0 || length > UINT16_MAX) return -1;

    const size_t size = static_cast<size_t>(length);
    const Heap<char> buffer(std::max(size, size_t{1}));
    if (!buffer.ok()) return -1;
    memset(buffer.get(), 0, size);
    if (payload != nullptr) memcpy(buffer.get(), payload, size);
    iwreq request = object_request(ifname, buffer.get(), static_cast<uint16_t>(length),
                                   static_cast<uint16_t>(oid | kSetFlag));
    return control(driver.get(), kObjectRequest, &request) < 0 ? -1 : 0;
}

int wsc_get_oid(const char* ifname, uint16_t oid, void* answer, uint32_t* length) {
    const Descriptor driver = wsc_open_ifname_socket(ifname);
    if (!driver.ok() || answer == nullptr) return -1;

    iwreq request = object_request(ifname, answer, 0, oid);
    if (control(driver.get(), kObjectRequest, &request) < 0) return -1;
    if (length != nullptr) *length = request.u.data.length;
    return 0;
}

int wireless_get_scan_buf(const char* ifname, char* buffer, uint16_t size) {
    const Descriptor driver = wsc_open_ifname_socket(ifname);
    if (!driver.ok() || buffer == nullptr) return -1;

    iwreq request = object_request(ifname, buffer, size, 0);
    return control(driver.get(), kSurveyRequest, &request) < 0 ? 0 : request.u.data.length;
}
