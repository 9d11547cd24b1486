#include "boardctl/verbs/host_records.h"

#include <algorithm>
#include <iterator>

#include "board/model/pins.h"
#include "board/model/switch.h"
#include "boardctl/verbs/radio_names.h"
#include "platform/switch.h"
#include "src/host/host.h"

namespace boardctl {
namespace {

// The driver counts "only the listed" first.
constexpr int kDriverPolicies[] = {0, 2, 1};

}  // namespace

hw_info hardware_of(const Session& session) {
    alignas(hw_info) char block[PLATFORM_SYSINFO_SIZE] = {};
    if (HOST_CALL(session.library, get_si)("hw", block) != 0)
        throw Failed("the host does not know the board");
    return reinterpret_cast<const hw_info&>(block);
}

std::string address_text(const Session& session, const uint8_t* mac) {
    char text[18] = {};
    HOST_CALL(session.library, mactostr)(mac, text, sizeof text);
    return text;
}

std::string station_address(const Session& session, const char* argument, const std::string& mac) {
    uint8_t bytes[6];
    const bool is_address = HOST_CALL(session.library, strtomac)(mac.c_str(), bytes) == 0;
    if (!is_address || (bytes[0] & 1) != 0 || std::count(bytes, bytes + 6, 0) == 6)
        throw UsageError(std::string(argument) +
                         " is the address of a station, such as 3C:5A:B4:01:02:03, not " + mac);
    return address_text(session, bytes);
}

AccessFilter access_filter_of(const Session& session, uint32_t wl_index) {
    const Library& library = session.library;
    AccessFilter filter{HOST_CALL(library, macauth_get_policy)(wl_index), {}};
    const int limit = HOST_CALL(library, hwinfo_get_max_macauth)();
    mac_filter_table* const table = HOST_CALL(library, macdb_read)(wl_index, limit);
    if (table == nullptr) return filter;
    const auto* const entries = reinterpret_cast<const mac_filter_entry*>(table + 1);
    for (int32_t i = 0; i < table->count; ++i)
        if (entries[i].inactive == 0)
            filter.addresses.push_back(address_text(session, entries[i].mac));
    HOST_CALL(library, macdb_free)(table);
    return filter;
}

int driver_policy(int policy) {
    const bool is_known = policy >= 0 && policy < static_cast<int>(std::size(kDriverPolicies));
    return is_known ? kDriverPolicies[policy] : -1;
}

int host_policy(int driver_policy) {
    const auto* const end = std::end(kDriverPolicies);
    const auto* const place = std::find(std::begin(kDriverPolicies), end, driver_policy);
    return place == end ? -1 : static_cast<int>(place - std::begin(kDriverPolicies));
}

std::string port_led_register(const Session& session) {
    const bool is_old_chip = field_text(hardware_of(session).switch_chip) == "mt7530";
    return board::Switch().setting(is_old_chip ? "register.7d00" : "register.7c10");
}

bool is_led_lit(int pin) {
    return board::pin_value(pin, board::PinColumn::is_output) == 1 &&
           board::pin_value(pin, board::PinColumn::output) == 0;
}

port_counters counters_of(const Session& session, int user_port) {
    struct {
        port_counters known;
        char rest[512];  // the host's record goes on
    } record{};
    PLATFORM_CALL(session.library, get_eport_stat)(user_port, &record.known);
    return record.known;
}

}  // namespace boardctl
