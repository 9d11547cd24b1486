// Lists that the library fills, also for what is compared with the virtual board.
#pragma once

#include <memory>

#include "boardctl/verbs/radio_names.h"
#include "platform/records.h"

namespace boardctl {

// Throw Failed when the library does not answer.
std::unique_ptr<station_list> station_list_of(Session& session, const Radio& radio);
std::unique_ptr<ap_list> survey_of(Session& session, const Radio& radio);

}  // namespace boardctl
