// The same tables read the plain way, line by line with fgets() and sscanf(), as a measure.
#pragma once

#include <cstdio>

#include "platform/records.h"

namespace bench {

void read_stations(FILE* text, station_list& list, const wireless_conf* bss, int bss_count);
void read_survey(FILE* text, ap_list& list);

}  // namespace bench
