// killall and the daemons that it ends: the board knows those that run, one NAME=... a line.
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "board/tools/tools.h"

namespace board::tools {

int killall(Words words) {
    const std::string path = live_path("processes");
    KeyFile running = KeyFile::load_or_empty(path);
    int status = words.empty() ? 1 : 0;
    for (const std::string& name : words)
        if (!running.remove(name)) status = fail(1, name + ": no process found");
    return running.save(path) ? status : 1;
}

int start_daemon(const std::string& name) {
    const std::string path = live_path("processes");
    KeyFile running = KeyFile::load_or_empty(path);
    running.set(name, "running");
    return running.save(path) ? 0 : 1;
}

}  // namespace board::tools
