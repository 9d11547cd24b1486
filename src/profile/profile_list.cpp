#include "src/profile/profile_list.h"

namespace platform {
namespace {

constexpr size_t kValueSize = 4096;  // of the longest, an access list or a model name

// The text itself when it has no line feed, which is nearly always.
class Value {
public:
    explicit Value(const char* text) : text_(text) {
        const std::string_view line = first_line(text);
        if (text[line.size()] == '\0') return;
        copy_text(line_, line);
        text_ = line_;
    }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    const char* c_str() const { return text_; }

private:
    const char* text_;
    char line_[kValueSize];
};

}  // namespace

void ProfileList::set(const char* key, const char* value) {
    genconfig_set_value(&list_, key, Value(value).c_str());
}

void ProfileOnDisk::set(const char* key, const char* value) const {
    genconfig_set_value_direct(path_.c_str(), key, Value(value).c_str());
}

}  // namespace platform
