#include "run/steps.h"

#include <cstdint>
#include <map>

#include "host/state.h"
#include "live/key_file.h"
#include "run/check.h"
#include "run/report.h"
#include "run/step.h"

namespace board::run {
namespace {

std::map<std::string, KeyFile> profiles() {
    std::map<std::string, KeyFile> files;
    for (const int32_t wl_mode : state().wl_modes) {
        const std::string path = profile_path(wl_mode);
        files.emplace(path, KeyFile::load_or_empty(path));
    }
    return files;
}

}  // namespace

int Steps::step(const std::string& call, const std::function<int()>& action) {
    const auto before = profiles();
    Step done = perform(capture_, call, action);
    done.call = std::to_string(++count_) + ". " + call;
    show(done, SIZE_MAX);
    for (const auto& [path, file] : profiles())
        if (const auto changes = difference(before.at(path), file); !changes.empty())
            section("Changes in " + path, changes);
    return done.result;
}

}  // namespace board::run
