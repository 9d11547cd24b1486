// Files, run-time status and stored configuration.
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "board/host/state.h"
#include "board/model/pins.h"
#include "board/store/journal.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "src/host/host.h"

namespace {

int hour_now() {
    const time_t now = std::time(nullptr);
    return std::gmtime(&now)->tm_hour;
}

int leading_number(const std::string& text) {
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

int store(const char* file, const char* key, const std::string& value) {
    const std::string path = board::live_path(file);
    board::KeyFile values = board::KeyFile::load_or_empty(path);
    values.set(key, value);
    return values.save(path) ? 0 : -1;
}

std::optional<std::string> status_value(const char* key) {
    return board::KeyFile::load_or_empty(board::live_path("istatus")).get(key);
}

}  // namespace

// The hours go round: the period lasts so many hours from its start on, equal hours all day.
bool board::is_silent(const LedSilence& silence) {
    if (silence.mode <= 1) return silence.mode == 1;
    const uint32_t since = (static_cast<uint32_t>(hour_now()) + 24 - silence.start_hour % 24) % 24;
    const uint32_t length = (silence.end_hour + 24 - silence.start_hour % 24) % 24;
    return length == 0 || since < length;
}

extern "C" {

int file_exists(const char* path) {
    return board::path_exists(path);
}

int get_file_string(const char* path, char* text, int size) {
    const auto content = board::read_text(path);
    if (!content || content->empty() || size <= 0) return 0;
    sf_strncpy(text, content->c_str(), static_cast<size_t>(size));
    trim_crcf(text);
    return 1;
}

int get_file_value(const char* path, int fallback) {
    const auto content = board::read_text(path);
    return content ? leading_number(*content) : fallback;
}

int write_file(const char* path, const char* text) {
    if (std::string_view(path) == board::kPinFile && board::has_pins()) {
        board::journal({"write_file", path, text});
        return board::write_pin_command(text) ? 0 : -1;
    }
    return board::write_text(path, text) ? 0 : -1;
}

int istatus_get_value_direct(const char* key, char* value) {
    constexpr size_t kValueSize = 128;
    const auto text = status_value(key);
    if (!text) return -1;
    sf_strncpy(value, text->c_str(), kValueSize);
    return 0;
}

int istatus_get_intvalue_direct(const char* key) {
    const auto text = status_value(key);
    return text ? leading_number(*text) : -1;
}

int istatus_set_value_direct(const char* key, const char* value) {
    board::journal({"istatus_set_value_direct", key, value});
    return store("istatus", key, value);
}

int iconfig_set_intvalue_direct(const char* key, int value) {
    board::journal({"iconfig_set_intvalue_direct", key, std::to_string(value)});
    return store("iconfig", key, std::to_string(value));
}

int get_led_silent_control(void* record, int) {
    const board::LedSilence& silence = board::state().led_silence;
    const uint32_t words[] = {silence.mode, silence.start_hour, silence.end_hour};
    std::memcpy(record, words, sizeof words);
    return 0;
}

}  // extern "C"
