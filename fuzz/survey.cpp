// The driver's site survey: what every neighbour sends through the air.
#include <linux/wireless.h>

#include "fuzz/target.h"
#include "platform/wireless.h"
#include "src/wireless/survey_table.h"

using namespace fuzz_target;

namespace {

std::string_view survey;

int answer_survey(void* record) {
    iw_point& data = static_cast<iwreq*>(record)->u.data;
    const size_t size = std::min<size_t>(survey.size(), data.length);
    std::memcpy(data.pointer, survey.data(), size);
    data.length = static_cast<uint16_t>(size);
    return 0;
}

void expect_sound(const ap_entry& entry) {
    CLAIM(is_terminated(entry.ssid) && std::strlen(entry.ssid) <= 32);
    CLAIM(is_terminated(entry.bssid) && is_terminated(entry.element.text));
    CLAIM(entry.channel.channel != 0 && entry.channel.reserved == 0);
}

// Every line by itself, on the heap and without a terminator.
void read_lines(std::string_view text) {
    platform::SurveyLines lines(text, 512);
    while (const auto line = lines.next()) {
        const std::unique_ptr<char[]> copy(new char[line->size() + 1]);
        std::memcpy(copy.get(), line->data(), line->size());
        const platform::SurveyLine parsed({copy.get(), line->size()});
        if (parsed.empty()) continue;
        ap_entry entry = {};
        parsed.fill(entry, 5000, 1);
        CLAIM(std::strlen(entry.ssid) <= 32 && entry.seen_at == 1);
    }
}

}  // namespace

void fuzz(Pieces& input) {
    survey = input.rest();
    outside().on_ioctl[SIOCIWFIRSTPRIV + 13] = answer_survey;
    board::state().radios[0].valid_channels = {1, 2, 3, 6, 13, -1, 0x7FFFFFFF};

    const std::unique_ptr<ap_list> list(new ap_list());
    std::memcpy(list->ifname, "ra0", 4);
    platform_wireless_api_get_ap_list(list.get());
    CLAIM(list->count <= AP_LIST_MAX);
    for (uint32_t i = 0; i < list->count; ++i) expect_sound(list->entries[i]);
    rt61_wireless_api_get_ap_norm_power("00:11:22:AA:BB:CC");
    read_lines(survey);

    const std::string whole(survey.substr(0, survey.find('\0')));
    Exact text(whole);
    Output<char[40]> line;
    const char* rest = text.c_str();
    while (rest != nullptr) {
        rest = get_one_line(rest, *line.get(), sizeof *line.get());
        CLAIM(is_terminated(*line.get()));
    }
}
