#include "board/model/modules.h"

#include "board/store/store.h"

namespace board {

bool is_module(const std::string& name) {
    return name.ends_with(".ko") && name.find('/') == std::string::npos;
}

Complaints load_module_faults(ModuleFaults& faults) {
    const auto take = [&faults](std::span<const std::string> words) {
        const bool is_fault = words[1] == "missing" || words[1] == "broken";
        return is_fault && is_module(words[0]) && faults.emplace(words[0], words[1]).second;
    };
    return read_configuration("/etc/modules.conf", take, LineForm::key_value);
}

ModuleFaults module_faults() {
    ModuleFaults faults;
    load_module_faults(faults);
    return faults;
}

}  // namespace board
