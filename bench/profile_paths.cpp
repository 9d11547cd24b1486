// Profile generation. Its limit is the host calls that the library makes, with the same arguments
// ready-made. A user's way is one sed over the profile, with the values ready-made, too.
#include <dlfcn.h>

#include <string_view>

#include "bench/path.h"
#include "bench/system.h"
#include "board/host/state.h"
#include "src/host/host.h"
#include "src/profile/profile_writer.h"

namespace bench {
namespace {

constexpr const char* kProfile = "/etc/wireless/radio0.dat";

std::vector<std::function<void()>> calls;
std::string edits;
bool recording = false;
genconfig_list replayed = {};

template <class Function>
Function* host_function(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Of calls within calls, which the host makes of its own functions, the outermost counts.
template <class Call>
auto note(Call call, std::function<void()> again) {
    if (!recording) return call();
    calls.push_back(std::move(again));
    recording = false;
    const auto result = call();
    recording = true;
    return result;
}

void note_edit(const char* key, std::string value) {
    if (!recording) return;
    for (size_t at = 0; (at = value.find_first_of("\\&|", at)) != value.npos; at += 2)
        value.insert(at, 1, '\\');
    edits += "s|^" + std::string(key) + "=.*|" + key + '=' + value + "|\n";
}

mac_filter_entry filter_address(int number) {
    mac_filter_entry entry = board::filter_entry("02:11:22:33:44:00");
    entry.mac[5] = static_cast<uint8_t>(number);
    return entry;
}

void write_profile() {
    const board::Radio& radio = board::state().radios[0];
    platform::mtk_wireless_profile_update(0, radio.bss.data(), radio.bss_count);
}

void replay() {
    for (const auto& call : calls) call();
}

std::string sed_command() {
    return "sed -i -f " + in_tree("/profile.sed") + ' ' + in_tree(kProfile);
}

// Only ways that come to the same profile can be compared.
void expect_same(const std::string& profile, const char* way) {
    if (read_file(kProfile) != profile) give_up(std::string(way) + " comes to another profile");
}

void prepare(int bss_count, int addresses) {
    board::State& state = board::state();
    state = board::factory_state();
    state.max_mac_filter = addresses;
    state.radios[0].bss_count = bss_count;
    for (uint32_t bss = 0; bss < static_cast<uint32_t>(bss_count); ++bss) {
        board::MacFilter& filter = state.mac_filters[bss] = {.policy = 1, .entries = {}};
        for (int i = 0; i < addresses; ++i) filter.entries.push_back(filter_address(i));
    }
    write_index(kRadioLines);
    for (const char* path : {kProfile, "/etc/wireless/radio1.dat"}) write_file(path, "Default\n");

    calls.clear();
    edits.clear();
    recording = true;
    write_profile();
    recording = false;
    write_file("/profile.sed", edits);
    const std::string profile = read_file(kProfile);
    replay();
    expect_same(profile, "the replay");
    run_shell(sed_command());
    expect_same(profile, "sed");
}

}  // namespace

void add_profile_paths(std::vector<Path>& paths) {
    for (const int bss_count : {1, 4}) {
        Path& path = paths.emplace_back();
        path.name = "profile, " + std::to_string(bss_count) + " BSS";
        path.unit = "filter addresses a BSS";
        path.sizes = {0, 64, 227};
        path.prepare = [bss_count](int addresses) { prepare(bss_count, addresses); };
        path.library = write_profile;
        path.limit = replay;
        path.shell = sed_command;
    }
}

}  // namespace bench

using namespace bench;

extern "C" {

int genconfig_read_file(const char* path, genconfig_list* list) {
    static auto* const host = host_function(genconfig_read_file, "genconfig_read_file");
    return note([=] { return host(path, list); },
                [path = std::string(path)] { genconfig_read_file(path.c_str(), &replayed); });
}

int genconfig_write_file(const char* path, genconfig_list* list) {
    static auto* const host = host_function(genconfig_write_file, "genconfig_write_file");
    return note([=] { return host(path, list); },
                [path = std::string(path)] { genconfig_write_file(path.c_str(), &replayed); });
}

void genconfig_free_ll(genconfig_list* list) {
    static auto* const host = host_function(genconfig_free_ll, "genconfig_free_ll");
    note([=] { return host(list), 0; }, [] { genconfig_free_ll(&replayed); });
}

int genconfig_set_value(genconfig_list* list, const char* key, const char* value) {
    static auto* const host = host_function(genconfig_set_value, "genconfig_set_value");
    note_edit(key, value);
    return note([=] { return host(list, key, value); },
                [key = std::string(key), value = std::string(value)] {
                    genconfig_set_value(&replayed, key.c_str(), value.c_str());
                });
}

int genconfig_set_intvalue(genconfig_list* list, const char* key, int32_t value) {
    static auto* const host = host_function(genconfig_set_intvalue, "genconfig_set_intvalue");
    note_edit(key, std::to_string(value));
    return note(
        [=] { return host(list, key, value); },
        [key = std::string(key), value] { genconfig_set_intvalue(&replayed, key.c_str(), value); });
}

int genconfig_set_value_direct(const char* path, const char* key, const char* value) {
    static auto* const host =
        host_function(genconfig_set_value_direct, "genconfig_set_value_direct");
    if (std::string_view(path) == kProfile) note_edit(key, value);
    return note([=] { return host(path, key, value); },
                [path = std::string(path), key = std::string(key), value = std::string(value)] {
                    genconfig_set_value_direct(path.c_str(), key.c_str(), value.c_str());
                });
}

int genconfig_remove_item(const char* path, const char* key) {
    static auto* const host = host_function(genconfig_remove_item, "genconfig_remove_item");
    return note([=] { return host(path, key); },
                [path = std::string(path), key = std::string(key)] {
                    genconfig_remove_item(path.c_str(), key.c_str());
                });
}

mac_filter_table* macdb_read(uint32_t wl_index, int max) {
    static auto* const host = host_function(macdb_read, "macdb_read");
    return note([=] { return host(wl_index, max); },
                [=] { macdb_free(macdb_read(wl_index, max)); });
}

}  // extern "C"
