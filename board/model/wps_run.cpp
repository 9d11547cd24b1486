#include "board/model/wps_run.h"

#include <cstdio>

#include "board/model/radio_driver.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "board/store/words.h"

namespace board {
namespace {

// What one query after the other reads: started, the messages of the protocol, done.
constexpr uint32_t kSteps[] = {kWpsStarted, 5, 12, 20, kWpsConfigured};
constexpr size_t kLastStep = std::size(kSteps) - 1;

constexpr uint32_t kFirstPin = 12345670;
constexpr const char* kFirstUuid = "2a1c5e0047b211ee9f33001020304050";

std::string path_of(std::string_view ifname) {
    return live_path("driver/" + std::string(ifname) + ".wps");
}

std::string value_of(std::string_view ifname, std::string_view key) {
    return KeyFile::load_or_empty(path_of(ifname)).get(key).value_or("");
}

void keep(std::string_view ifname, std::string_view key, std::string_view value) {
    KeyFile file = KeyFile::load_or_empty(path_of(ifname));
    file.set(key, value);
    file.save(path_of(ifname));
}

bool is_going_on(std::string_view ifname) {
    const auto step = to_number<size_t>(value_of(ifname, "step"));
    return step && *step < kLastStep;
}

bool is_armed(std::string_view ifname) {
    return driver_setting(ifname, "WscConfMode") == "7";
}

void start(std::string_view ifname) {
    const auto mode = driver_setting(ifname, "WscMode");
    const bool has_method = mode == "2" || (mode == "1" && driver_setting(ifname, "WscPinCode"));
    keep(ifname, "step", is_armed(ifname) && has_method ? "0" : "failed");
}

// Seven digits and the one that makes the sum of all, the odd places three times, a multiple of 10.
uint32_t with_check_digit(uint32_t digits) {
    uint32_t sum = 0;
    uint32_t weight = 3;
    for (uint32_t rest = digits; rest != 0; rest /= 10, weight = 4 - weight)
        sum += weight * (rest % 10);
    return digits * 10 + (10 - sum % 10) % 10;
}

void make_pin(std::string_view ifname) {
    constexpr uint32_t kSevenDigits = 10'000'000;
    const uint32_t next = (wps_pin(ifname) / 10 * 3 + 1'234'567) % kSevenDigits;
    keep(ifname, "pin", std::to_string(with_check_digit(next)));
}

}  // namespace

void take_wps_setting(std::string_view ifname, std::string_view key, std::string_view value) {
    if (key == "WscGetConf" && value == "1") start(ifname);
    if (key == "WscGenPinCode") make_pin(ifname);
    if (key == "WscConfMode" && value == "7") keep(ifname, "step", "");
    const bool ends = (key == "WscConfMode" && value != "7") || key == "WscStop";
    if (ends && is_going_on(ifname)) keep(ifname, "step", "failed");
}

uint32_t poll_wps(std::string_view ifname) {
    const std::string word = value_of(ifname, "step");
    if (word == "failed") return kWpsFailed;
    const auto step = to_number<size_t>(word);
    if (!step) return is_armed(ifname) ? kWpsArmed : kWpsOff;
    if (*step >= kLastStep) return kWpsConfigured;
    keep(ifname, "step", std::to_string(*step + 1));
    return kSteps[*step];
}

bool has_wps_peer(std::string_view ifname) {
    return to_number<size_t>(value_of(ifname, "step")).value_or(0) > 0;
}

Complaints load_wps_peer(std::vector<WpsPeerText>& texts) {
    texts = {
        {"device_name",   32, ""},
        {"manufacturer",  64, ""},
        {"model_name",    32, ""},
        {"model_number",  32, ""},
        {"serial_number", 32, ""},
    };
    const auto take = [&texts](std::span<const std::string> words) {
        for (WpsPeerText& row : texts) {
            if (row.key != words[0] || words[1].size() > row.width) continue;
            row.text = words[1];
            return true;
        }
        return false;
    };
    return read_configuration("/etc/wps_peer.conf", take, LineForm::key_value);
}

std::vector<WpsPeerText> wps_peer() {
    std::vector<WpsPeerText> texts;
    load_wps_peer(texts);
    return texts;
}

uint32_t wps_pin(std::string_view ifname) {
    return to_number<uint32_t>(value_of(ifname, "pin")).value_or(kFirstPin);
}

std::string wps_uuid(std::string_view ifname) {
    std::string digits = value_of(ifname, "uuid");
    if (digits.empty()) digits = kFirstUuid;
    std::string bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(to_number<unsigned>(digits.substr(i, 2), 16).value_or(0));
    return bytes;
}

void set_wps_uuid(std::string_view ifname, std::string_view bytes) {
    std::string digits;
    char pair[3];
    for (const char c : bytes) {
        std::snprintf(pair, sizeof pair, "%02x",
                      static_cast<unsigned>(static_cast<unsigned char>(c)));
        digits += pair;
    }
    keep(ifname, "uuid", digits);
}

}  // namespace board
