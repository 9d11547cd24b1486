// Profile-style files, edited in memory or straight on disk.

#include "board/host/state.h"
#include "board/store/journal.h"
#include "board/store/key_file.h"
#include "src/host/host.h"

namespace {

// What a list head points to.
struct OpenProfile {
    std::string path;
    board::KeyFile file;
};

void note(std::string_view path, std::string_view edit, std::string_view what = "") {
    if (!board::state().journal_profile_edits) return;
    if (what.empty())
        board::journal({"profile", path, edit});
    else
        board::journal({"profile", path, edit, what});
}

std::string pair_text(const char* key, const char* value) {
    return std::string(key) + '=' + value;
}

OpenProfile& open_profile(genconfig_list* list) {
    if (list->first == nullptr) {
        list->first = list->last = new OpenProfile;
        ++board::state().open_profiles;
    }
    return *static_cast<OpenProfile*>(list->first);
}

}  // namespace

extern "C" {

int genconfig_read_file(const char* path, genconfig_list* list) {
    OpenProfile& profile = open_profile(list);
    profile.path = path;
    auto file = board::KeyFile::load(path);
    if (!file) return -1;
    profile.file = std::move(*file);
    return 0;
}

int genconfig_set_value(genconfig_list* list, const char* key, const char* value) {
    OpenProfile& profile = open_profile(list);
    note(profile.path, "set", pair_text(key, value));
    profile.file.set(key, value);
    return 0;
}

int genconfig_set_intvalue(genconfig_list* list, const char* key, int32_t value) {
    return genconfig_set_value(list, key, std::to_string(value).c_str());
}

int genconfig_write_file(const char* path, genconfig_list* list) {
    note(path, "write");
    return open_profile(list).file.save(path) ? 0 : -1;
}

void genconfig_free_ll(genconfig_list* list) {
    if (list->first == nullptr) return;
    delete static_cast<OpenProfile*>(list->first);
    list->first = list->last = nullptr;
    --board::state().open_profiles;
}

int genconfig_remove_item(const char* path, const char* key) {
    note(path, "remove", key);
    auto file = board::KeyFile::load(path);
    return file && file->remove(key) && file->save(path) ? 0 : -1;
}

int genconfig_set_value_direct(const char* path, const char* key, const char* value) {
    note(path, "store", pair_text(key, value));
    board::KeyFile file = board::KeyFile::load_or_empty(path);
    file.set(key, value);
    return file.save(path) ? 0 : -1;
}

int genconfig_set_intvalue_direct(const char* path, const char* key, int32_t value) {
    return genconfig_set_value_direct(path, key, std::to_string(value).c_str());
}

int genconfig_get_value_direct(const char* path, const char* key, char* value) {
    constexpr size_t kValueSize = 128;
    const auto text = board::KeyFile::load_or_empty(path).get(key);
    if (!text) return -1;
    sf_strncpy(value, text->c_str(), kValueSize);
    return 0;
}

}  // extern "C"
