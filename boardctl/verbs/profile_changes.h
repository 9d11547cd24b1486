// What differs between two forms of a driver's profile.
#pragma once

#include "board/store/key_file.h"
#include "boardctl/verb.h"

namespace boardctl {

// Rows of key, before and after, in the order of the later form; null where a key is missing.
Json changes_between(const board::KeyFile& before, const board::KeyFile& after);

}  // namespace boardctl
