// The board for programs that call the library a million times: one for all calls, started anew
// between them, on which all files, devices and commands say the same.
#pragma once

#include <unistd.h>

#include "src/host/host.h"
#include "tests/support/board.h"

namespace harness {

class Outside : public Board {
public:
    Outside() {
        current = this;
        remove(kL1ProfilePath);
        for (const char* key : {"wps_status.ra0", "wps_status.rai0"})
            istatus_set_value_direct(key, "3");
        other_file = [this](std::string_view path) {
            const bool bytes = path.starts_with("/dev/") || path.ends_with("_EEPROM.bin");
            return path == kL1ProfilePath ? &index : bytes ? &device : &text;
        };
        Board::on_command = [this](const std::string& command) {
            commands.push_back(command);
            Answer answer = text;
            if (status_of) answer.status = status_of(command);
            return answer;
        };
        for (const unsigned long request : {0x89F3UL, 0x89F4UL})  // the switch's registers
            on_ioctl[request] = [](void*) { return 0; };
        forget();
        fresh_ = memory;
    }

    std::string index;   // the radio index file
    std::string text;    // what every other file holds that is not there and every command prints
    std::string device;  // what every device and image holds
    std::string essid;   // what a client is linked to
    std::vector<std::string> commands;
    std::function<int(const std::string& command)> status_of;  // of a command; 0 without

    using Board::expect_all_given_back;
    using Board::memory;
    using Board::on_ioctl;
    using Board::remove;
    using Board::write;

    void restart() {
        for (std::string* all : {&index, &text, &device, &essid}) all->clear();
        commands.clear();
        forget();
        memory.restore(fresh_);
    }

private:
    void TestBody() override {}

    static inline Outside* current;
    board::Memory fresh_;
    const LibraryHook pause_{"usleep", +[](useconds_t) { return 0; }};  // none to be journaled
    const LibraryHook essid_{"iwconfig_client_get_essid", +[](const char*, char* name) {
                                 sf_strncpy(name, current->essid.c_str(), 33);
                                 return 0;
                             }};
};

}  // namespace harness
