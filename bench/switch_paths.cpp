// The Ethernet switch. The limits are the bare host calls, requests and pauses that a path cannot
// do without. What answers costs nothing, so the ratio is all the library's own.
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

#include "bench/address_table.h"
#include "bench/path.h"
#include "bench/system.h"
#include "board/host/state.h"
#include "platform/switch.h"
#include "src/host/host.h"

namespace bench {
namespace {

constexpr unsigned long kRead = 0x89F3;
constexpr int kAddresses = 2046;  // as many as one search goes through
constexpr int kPort = 1;
constexpr int kCounters = 13;
constexpr int kAccesses = 5;  // for each address: status, attributes, two words, next entry

int addresses = 0;
int presented = 0;
std::vector<switch_mac_entry> entries(kAddresses);

void answer(uint32_t* words, bool write) {
    answer_table(words, write, addresses, presented);
}

void walk() {
    if (mt753x_get_all_macentry(entries.data(), kAddresses, 0x7F) != addresses)
        give_up("addresses are missing");
}

void request_register(int socket, uint32_t offset) {
    uint32_t words[8] = {31, offset, 0, 0, 0, 0, 0, 0};
    ifreq request = {};
    std::strcpy(request.ifr_name, "eth0");
    request.ifr_data = reinterpret_cast<char*>(words);
    ioctl(socket, kRead, &request);
    keep(words);
}

void walk_by_pauses() {
    for (int i = 0; i < addresses; ++i) {
        if (i != 0) usleep(1000);
        for (int access = 0; access < kAccesses; ++access) request_register(0, 0x84);
    }
}

void prepare_walk(int count) {
    addresses = count;
    switch_answer = answer;
}

void prepare_counters(int) {
    switch_answer = [](uint32_t* words, bool) { words[3] = words[1]; };
}

void read_counters() {
    static port_counters counters;
    if (get_eport_stat(kPort, &counters) != 0) give_up("no counters");
}

void read_counters_bare() {
    static hw_info hw;
    const intptr_t lock = lock_file("switch");
    get_si("hw", &hw);
    keep(&hw);
    get_dev_port(&hw, kPort);
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    for (uint32_t i = 0; i < kCounters; ++i) request_register(socket, 0x4000 + 4 * i);
    close(socket);
    unlock_file(lock);
}

void set_walk_path(Path& path) {
    path.name = "address table";
    path.unit = "addresses";
    path.sizes = {64, 512, kAddresses};
    path.prepare = prepare_walk;
    path.library = walk;
    path.limit = walk_by_pauses;
    path.waits = true;
}

void set_counter_path(Path& path) {
    path.name = "port counters";
    path.unit = "port";
    path.sizes = {1};
    path.prepare = prepare_counters;
    path.library = read_counters;
    path.limit = read_counters_bare;
}

}  // namespace

void add_switch_paths(std::vector<Path>& paths) {
    set_walk_path(paths.emplace_back());
    set_counter_path(paths.emplace_back());
}

}  // namespace bench
