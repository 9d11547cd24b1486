#include "boardctl/facts/profile.h"

#include <set>

namespace boardctl {

std::vector<std::string> keys_of(const board::KeyFile& file) {
    std::vector<std::string> keys;
    std::set<std::string_view> seen;
    for (const std::string& line : file.lines())
        if (const auto pair = board::split_key_value(line); pair && seen.insert(pair->key).second)
            keys.emplace_back(pair->key);
    return keys;
}

Json value_of(const board::KeyFile& file, const std::string& key) {
    const auto value = file.get(key);
    return value ? Json(*value) : Json();
}

Json changes_between(const board::KeyFile& before, const board::KeyFile& after) {
    auto keys = keys_of(after);
    for (const std::string& key : keys_of(before))
        if (!after.get(key)) keys.push_back(key);
    Json rows = Json::array();
    for (const std::string& key : keys)
        if (before.get(key) != after.get(key))
            rows.push_back({
                {"key",            key },
                { "before", value_of(before, key)},
                { "after",  value_of(after, key)}
            });
    return rows;
}

}  // namespace boardctl
