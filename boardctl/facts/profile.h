// What differs between two forms of a driver's profile.
#pragma once

#include "board/store/key_file.h"
#include "boardctl/verb.h"

namespace boardctl {

std::vector<std::string> keys_of(const board::KeyFile& file);
Json value_of(const board::KeyFile& file, const std::string& key);  // null where it is missing

// Rows of key, before and after, in the order of the later form.
Json changes_between(const board::KeyFile& before, const board::KeyFile& after);

}  // namespace boardctl
