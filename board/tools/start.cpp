// insmod, ls and led_ctl.
#include <cstdio>
#include <filesystem>
#include <string>

#include "board/model/modules.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "board/tools/tools.h"

namespace board::tools {
namespace {

// Nothing of a good module.
std::string fault_of(const std::string& module) {
    return module_faults()[module];
}

}  // namespace

int insmod(Words words) {
    if (words.size() != 1 || !is_module(words[0])) return fail(1, "Usage: insmod <module>.ko");
    const std::string& module = words[0];
    const std::string fault = fault_of(module);
    const std::string start = "insmod: can't insert '" + module + "': ";
    if (fault == "missing") return fail(1, start + "No such file or directory");
    if (!fault.empty()) return fail(1, start + "invalid module format");
    const std::string path = live_path("modules");
    std::vector<std::string> loaded = read_lines(path);
    for (const std::string& name : loaded)
        if (name == module) return fail(1, start + "File exists");
    loaded.push_back(module);
    return replace_lines(path, loaded) ? 0 : 1;
}

// Modules are found by their bare names, as by a start-up that runs in their directory.
int ls(Words words) {
    int status = 0;
    for (const std::string& name : words) {
        const bool found =
            is_module(name) ? fault_of(name) != "missing" : std::filesystem::exists(name);
        if (found)
            std::printf("%s\n", name.c_str());
        else
            status = fail(1, "ls: " + name + ": No such file or directory");
    }
    return status;
}

// A setting shows at the next update.
int led_ctl(Words words) {
    const std::string path = live_path("leds");
    KeyFile leds = KeyFile::load_or_empty(path);
    if (words.size() == 1 && words[0] == "update") {
        if (const auto run = leds.get("run.next")) leds.set("run", *run);
        return leds.save(path) ? 0 : 1;
    }
    const bool known = words.size() == 3 && words[0] == "set" && words[1] == "run" &&
                       (words[2] == "slow" || words[2] == "off");
    if (!known) return fail(1, "Usage: led_ctl set run slow|off; led_ctl update");
    leds.set("run.next", words[2]);
    return leds.save(path) ? 0 : 1;
}

}  // namespace board::tools
