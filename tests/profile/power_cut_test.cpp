// The power fails at each change of the board's files: no profile is torn, and the next start makes
// all of them anew from the host's records.
#include <map>

#include "platform/platform.h"
#include "tests/profile/sample_radios.h"

namespace {

class PowerCut : public harness::SampleRadios, public testing::WithParamInterface<void (*)()> {
protected:
    // The line of each key of each profile.
    std::map<std::string, std::string> keys() const {
        std::map<std::string, std::string> lines;
        for (const char* path : harness::kProfilePath)
            for (const std::string& line : board::read_lines(path))
                lines[path + line.substr(0, line.find('='))] += line;
        return lines;
    }

    // After so many changes that took place.
    void run(void (*operation)(), unsigned changes = ~0U) {
        memory.last_change = changes == ~0U ? changes : memory.changes + changes;
        operation();
        memory.last_change = ~0U;
        forget();
    }
};

void start() {
    platform_init_wireless();
}

TEST_P(PowerCut, LeavesWholeKeysAndTheNextStartRenewsAll) {
    const board::State records = host();
    const board::Memory before = memory;
    auto old = keys();
    run(GetParam());
    const unsigned changes = memory.changes - before.changes;
    auto whole = keys();
    run(start);
    const auto renewed = keys();
    auto last = old;
    for (unsigned n = 0; n < changes; ++n) {
        memory = before;
        host() = records;
        run(GetParam(), n);
        auto found = keys();
        if (found == last && n != 0) continue;
        last = found;
        for (auto& [key, line] : found) EXPECT_TRUE(line == old[key] || line == whole[key]) << line;
        for (auto& [key, line] : old) EXPECT_TRUE(found[key] == line || found[key] == whole[key]);
        run(start);
        EXPECT_EQ(renewed, keys()) << "cut at change " << n;
    }
}

INSTANTIATE_TEST_SUITE_P(, PowerCut,
                         testing::Values(
                             start, [] { platform_set_wireless(nullptr, "rai0"); },
                             [] { mtk_profile_update_for_easymesh(); },
                             [] { wireless_macauth_set_policy(0, 2); },
                             [] { wireless_apply_macauth(0x10000); }));

}  // namespace
