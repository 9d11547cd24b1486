// What the Wi-Fi driver prints: a station table of form V2, a site survey.
#pragma once

#include <string>

namespace bench {

std::string station_table(int rows);
std::string survey_table(int rows);

}  // namespace bench
