// One driver profile in memory: KEY=VALUE lines, edited by key and written back whole.
#pragma once

#include <stdint.h>

#include "frame/host.h"
#include "support/text.h"

namespace platform {

class ProfileList {
public:
    explicit ProfileList(const char* path) : path_(path) { genconfig_read_file(path, &list_); }
    ~ProfileList() { genconfig_free_ll(&list_); }
    ProfileList(const ProfileList&) = delete;
    ProfileList& operator=(const ProfileList&) = delete;

    void set(const char* key, int32_t value) { genconfig_set_intvalue(&list_, key, value); }
    void set(const char* key, const char* value) { genconfig_set_value(&list_, key, value); }
    void set(const char* key, const Text& value) { set(key, value.c_str()); }
    void set(const Text& key, const char* value) { set(key.c_str(), value); }
    void set(const Text& key, int32_t value) { set(key.c_str(), value); }

    // A record's text, which may fill its field without a terminator.
    template <size_t kSize>
    void set_field(const char* key, const char (&field)[kSize]) {
        set(key, TextCopy<kSize + 1>(field_text(field)).c_str());
    }

    void write() { genconfig_write_file(path_, &list_); }

private:
    const char* path_;
    genconfig_list list_ = {};
};

}  // namespace platform
