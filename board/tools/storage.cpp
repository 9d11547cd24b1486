// uboot_env, mtd and restorebackup.
#include <cstdio>

#include "board/model/flash.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "board/tools/tools.h"

namespace board::tools {
namespace {

int print_variable(const BootEnvironment& environment, const std::string& name) {
    const auto value = environment.get(name);
    if (!value) return 1;
    std::printf("%s\n", value->c_str());
    return 0;
}

// The whole environment as it should be; storing it is the next command's part.
int print_environment_with(BootEnvironment environment, const std::string& assignment) {
    const auto pair = split_key_value(assignment);
    if (!pair || pair->key.empty()) return fail(1, "uboot_env: " + assignment + " is no setting");
    environment.set(pair->key, pair->value);
    const std::string image = environment.image();
    return std::fwrite(image.data(), 1, image.size(), stdout) == image.size() ? 0 : 1;
}

}  // namespace

int uboot_env(Words words) {
    const auto partition = find_partition("Config");
    if (!partition) return fail(1, "uboot_env: no Config partition");
    const auto environment = BootEnvironment::parse(read_partition(*partition));
    if (words.size() == 2 && words[0] == "-g") return print_variable(environment, words[1]);
    if (words.size() == 2 && words[0] == "-s") return print_environment_with(environment, words[1]);
    return fail(1, "Usage: uboot_env -g <name> | -s <name>=<value>");
}

int mtd(Words words) {
    if (words.size() != 3 || words[0] != "write" || words[1] != "-")
        return fail(1, "Usage: mtd write - <partition>");
    const auto partition = find_partition(words[2]);
    if (!partition) return fail(1, "Could not open mtd device: " + words[2]);
    if (standard_input().empty()) return fail(1, "mtd: nothing to write");
    if (!write_partition(*partition, standard_input()))
        return fail(1, "mtd: the data does not fit into " + words[2]);
    return 0;
}

// Keeps what it was given where a test or a person can look at it.
int restorebackup(Words words) {
    if (words.size() != 1) return fail(1, "Usage: restorebackup <file>");
    const auto backup = read_text(words[0]);
    if (!backup) return fail(1, "restorebackup: cannot read " + words[0]);
    return replace_text(live_path("restored"), *backup) ? 0 : 1;
}

}  // namespace board::tools
