// The same work as ordinary C does it: one fgets() and one sscanf() or strtok() a row.
#pragma once

#include "platform/records.h"

namespace bench {

inline constexpr const char* kIndexPath = "/etc/wireless/l1profile.dat";
inline constexpr const char* kPinPath = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
inline constexpr const char* kStationPath = "/var/run/station_table.ra0";
inline constexpr const char* kSurveyPath = "/tmp/survey";

extern station_list stations;
extern ap_list networks;

int read_stations();
int read_survey();
int find_name();
int find_pin();
int list_addresses();

}  // namespace bench
