// What the host tells of the board, and texts in its records.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "boardctl/session.h"
#include "platform/records.h"

namespace boardctl {

hw_info hardware_of(const Session& session);  // throws Failed

std::string address_text(const Session& session, const uint8_t* mac);

// An argument that is the address of one station, as address_text() writes it; throws UsageError.
std::string station_address(const Session& session, const char* argument, const std::string& mac);

// A text of a record, which may fill its field.
template <size_t kSize>
std::string field_text(const char (&field)[kSize]) {
    const std::string_view text(field, kSize);
    return std::string(text.substr(0, text.find('\0')));
}
template <size_t kSize>
void set_text(char (&field)[kSize], std::string_view text) {
    std::fill_n(field, kSize, '\0');
    std::copy_n(text.begin(), std::min(text.size(), kSize), field);
}

}  // namespace boardctl
