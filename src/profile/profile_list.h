// A driver profile: KEY=VALUE lines, edited by key; whole in memory, or key by key on disk.
//
// A text ends at its line feed when it becomes a value. Neighbours and users have their say in
// some: what stands behind the line feed would be lines, with keys, of its own.
#pragma once

#include <stdint.h>

#include "platform/records.h"
#include "src/host/host.h"
#include "src/support/text.h"

namespace platform {

class ProfileList {
public:
    explicit ProfileList(const char* path) : path_(path) { genconfig_read_file(path, &list_); }
    ~ProfileList() { genconfig_free_ll(&list_); }
    ProfileList(const ProfileList&) = delete;
    ProfileList& operator=(const ProfileList&) = delete;

    void set(const char* key, int32_t value) { genconfig_set_intvalue(&list_, key, value); }
    void set(const char* key, const char* value);
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

class ProfileOnDisk {
public:
    explicit ProfileOnDisk(const char* path) : path_(path) {}

    void set(const char* key, int32_t value) const {
        genconfig_set_intvalue_direct(path_.c_str(), key, value);
    }
    void set(const char* key, const char* value) const;
    void set(const Text& key, const char* value) const { set(key.c_str(), value); }

private:
    TextCopy<PLATFORM_PATH_SIZE> path_;
};

}  // namespace platform
