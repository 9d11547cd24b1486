#include "board/driver/wireless.h"

#include <linux/sockios.h>
#include <linux/wireless.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

#include "board/model/interfaces.h"
#include "board/model/radio_driver.h"
#include "board/model/wps_run.h"
#include "board/store/journal.h"
#include "board/store/store.h"
#include "src/host/host.h"

namespace board {
namespace {

constexpr unsigned long kObject = SIOCIWFIRSTPRIV + 1;
constexpr unsigned long kSurvey = SIOCIWFIRSTPRIV + 13;
constexpr uint16_t kSetFlag = 0x8000;

using Answer = std::optional<std::string>;

template <class Number>
std::string bytes_of(Number number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

Answer status(const std::string& ifname) {
    return bytes_of(poll_wps(ifname));
}

Answer pin(const std::string& ifname) {
    return bytes_of(wps_pin(ifname));
}

Answer uuid(const std::string& ifname) {
    return wps_uuid(ifname);
}

// The texts of the device at the other end, each in a field of its own width.
Answer peer(const std::string& ifname) {
    constexpr size_t kReserved = 8;
    if (!has_wps_peer(ifname)) return std::nullopt;
    std::string record;
    for (WpsPeerText& row : wps_peer()) {
        row.text.resize(row.width);
        record += row.text;
    }
    return record.append(kReserved, '\0');
}

// Middle of the block of channels that a radio uses.
int centre_of(const channel_spec& spec) {
    constexpr int kFirst5GHz = 36;
    constexpr int kBlock = 16;  // channel numbers of 80 MHz
    const int block = (spec.channel - kFirst5GHz) / kBlock * kBlock + kFirst5GHz;
    if (spec.bandwidth_mhz == 80) return block + 6;
    return spec.bandwidth_mhz == 40 ? (spec.channel + spec.ext_channel) / 2 : spec.channel;
}

Answer frequency(const std::string& ifname) {
    constexpr int kLast2GHz = 14;
    channel_spec spec{};
    if (!interface_is_up(ifname) || iwconfig_client_get_channel(ifname.c_str(), &spec) != 0)
        return std::nullopt;
    const int base_mhz = spec.channel > kLast2GHz ? 5000 : 2407;
    return bytes_of(static_cast<uint16_t>(base_mhz + 5 * centre_of(spec)));
}

bool take_uuid(const std::string& ifname, const std::string& bytes) {
    constexpr size_t kUuidSize = 16;
    if (bytes.size() != kUuidSize) return false;
    journal({"driver", ifname, "uuid", bytes});
    set_wps_uuid(ifname, bytes);
    return true;
}

bool take_element(const std::string& ifname, const std::string& bytes) {
    constexpr size_t kElementSize = 32;
    if (bytes.size() != kElementSize) return false;
    journal({"driver", ifname, "beacon element", bytes});
    return replace_text(live_path("driver/" + ifname + ".element"), bytes);
}

struct Object {
    uint16_t number;
    Answer (*get)(const std::string& ifname);
    bool (*set)(const std::string& ifname, const std::string& bytes);
};

constexpr Object kObjects[] = {
    {0x0751, status,    nullptr     },
    {0x0752, pin,       nullptr     },
    {0x0753, uuid,      take_uuid   },
    {0x075C, peer,      nullptr     },
    {0x0974, frequency, nullptr     },
    {0x0EF0, nullptr,   take_element},
};

// The driver copies its answer whole, wherever the caller points; it asks for no size.
int put_answer(iwreq& request, const Answer& answer) {
    if (!answer) return -ENODATA;
    std::memcpy(request.u.data.pointer, answer->data(), answer->size());
    request.u.data.length = static_cast<uint16_t>(answer->size());
    return 0;
}

int exchange_object(const std::string& ifname, iwreq& request) {
    const bool sets = (request.u.data.flags & kSetFlag) != 0;
    const int number = request.u.data.flags & ~kSetFlag;
    for (const Object& object : kObjects) {
        if (object.number != number) continue;
        if (!sets && object.get != nullptr) return put_answer(request, object.get(ifname));
        if (!sets || object.set == nullptr) break;
        const char* const bytes = static_cast<const char*>(request.u.data.pointer);
        return object.set(ifname, {bytes, request.u.data.length}) ? 0 : -EINVAL;
    }
    return -EOPNOTSUPP;
}

int read_survey(const std::string& ifname, iwreq& request) {
    Answer text = finished_survey(ifname);
    if (!text) return -EAGAIN;
    text->resize(std::min<size_t>(text->size(), request.u.data.length));
    return put_answer(request, text);
}

int find_interface(const std::string& ifname, ifreq& request) {
    const auto names = interface_names();
    const auto place = std::find(names.begin(), names.end(), ifname);
    request.ifr_ifindex = static_cast<int>(place - names.begin()) + 2;  // 1 is the loopback
    return 0;
}

int answer(unsigned long request, const std::string& ifname, void* argument) {
    if (!interface_exists(ifname)) return -ENODEV;
    if (request == SIOCGIFINDEX) return find_interface(ifname, *static_cast<ifreq*>(argument));
    iwreq& record = *static_cast<iwreq*>(argument);
    return request == kObject ? exchange_object(ifname, record) : read_survey(ifname, record);
}

}  // namespace

std::optional<int> wireless_ioctl(unsigned long request, void* argument) {
    if (request != SIOCGIFINDEX && request != kObject && request != kSurvey) return std::nullopt;
    const char* const name = static_cast<const char*>(argument);  // begins both requests' records
    const int result = answer(request, {name, strnlen(name, IFNAMSIZ)}, argument);
    if (result == 0) return 0;
    errno = -result;
    return -1;
}

}  // namespace board
