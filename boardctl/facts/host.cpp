#include "boardctl/facts/host.h"

namespace boardctl {

hw_info hardware_of(const Session& session) {
    alignas(hw_info) char block[PLATFORM_SYSINFO_SIZE] = {};
    if (session.host.get_si("hw", block) != 0) throw Failed("the host does not know the board");
    return reinterpret_cast<const hw_info&>(block);
}

std::string address_text(const Session& session, const uint8_t* mac) {
    char text[18] = {};
    session.host.mactostr(mac, text, sizeof text);
    return text;
}

std::string station_address(const Session& session, const char* argument, const std::string& mac) {
    uint8_t bytes[6];
    const bool is_address = session.host.strtomac(mac.c_str(), bytes) == 0;
    if (!is_address || (bytes[0] & 1) != 0 || std::count(bytes, bytes + 6, 0) == 6)
        throw UsageError(std::string(argument) +
                         " is the address of a station, such as 3C:5A:B4:01:02:03, not " + mac);
    return address_text(session, bytes);
}

}  // namespace boardctl
