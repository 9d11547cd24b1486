#include <string.h>
#include <time.h>

#include "platform/wireless.h"
#include "platform/wlmap.h"
#include "src/driver/object.h"
#include "src/driver/scan.h"
#include "src/host/host.h"
#include "src/support/command.h"
#include "src/support/heap.h"
#include "src/support/pause.h"
#include "src/wireless/survey_table.h"
#include "src/wlmap/ifname.h"

using namespace platform;

namespace {

constexpr uint16_t kTextSize = 32768;
constexpr size_t kLineLimit = 512;
constexpr int32_t kBase2GHz = 2407;
constexpr int32_t kBase5GHz = 5000;

// The survey text of the interface's radio, cut at its first NUL.
std::string_view survey_text(const char* buffer, int length) {
    const size_t limit = length < kTextSize ? static_cast<size_t>(length) : kTextSize - 1;
    return {buffer, strnlen(buffer, limit)};
}

void list_networks(std::string_view text, ap_list& list) {
    const TextCopy<PLATFORM_IFNAME_SIZE + 1> ifname(field_text(list.ifname));
    const IfName main_name = IfName::main(get_wl_mode_by_ifname2(ifname.c_str()));
    const int32_t base_mhz = main_name.view() == "rai0" ? kBase5GHz : kBase2GHz;

    SurveyLines lines(text, kLineLimit);
    while (list.count < AP_LIST_MAX) {
        const auto line = lines.next();
        if (!line) return;
        const SurveyLine survey(*line);
        if (survey.empty()) continue;

        ap_entry& entry = list.entries[list.count];
        entry.channel.channel = survey.channel();
        entry.channel.ext_channel = survey.channel();
        if (wireless_check_channel_valid(main_name.c_str(), list.channel_check, 20,
                                         survey.channel()) == 0 ||
            survey.channel() == 0)
            continue;
        survey.fill(entry, base_mhz, static_cast<uint32_t>(time(nullptr)));
        ++list.count;
    }
}

}  // namespace

int wireless_api_start_ap_scan(const char* ifname) {
    if (ifname == nullptr) return 0;
    run_shell(Command<256>("/sbin/iwpriv %s set SiteSurvey=1", ifname));
    pause_seconds(1);
    return 0;
}

int wireless_api_wait_scan_end(const char* ifname) {
    return ifname != nullptr ? wireless_wait_scan_status(ifname, 15) : 0;
}

int platform_wireless_api_get_ap_list(ap_list* list) {
    if (list == nullptr) return 1;

    list->type = AP_LIST_TYPE;
    list->count = 0;
    const Heap<char> buffer(kTextSize);
    if (!buffer.ok()) return 1;
    memset(buffer.get(), 0, kTextSize);
    const TextCopy<PLATFORM_IFNAME_SIZE + 1> ifname(field_text(list->ifname));
    const int length = wireless_get_scan_buf(ifname.c_str(), buffer.get(), kTextSize);
    if (length == 0) return 1;
    if (length > 0) list_networks(survey_text(buffer.get(), length), *list);
    return 0;
}

const char* get_one_line(const char* text, char* line, int size) {
    if (text == nullptr || line == nullptr || size < 1) return nullptr;

    memset(line, 0, static_cast<size_t>(size));
    const char* const end = strchr(text, '\n');
    if (end == nullptr) return nullptr;
    const std::string_view found(text, static_cast<size_t>(end + 1 - text));
    if (found.size() < static_cast<size_t>(size)) memcpy(line, found.data(), found.size());
    return end + 1;
}

int rt61_wireless_api_get_ap_norm_power(const char* bssid) {
    const Heap<ap_list> list(1);
    if (bssid == nullptr || !list.ok()) return 0;

    memset(list.get(), 0, sizeof(ap_list));
    platform_wireless_api_get_ap_list(list.get());
    for (uint32_t i = 0; i < list.get()->count; ++i) {
        const ap_entry& entry = list.get()->entries[i];
        if (field_text(entry.bssid) == bssid) return entry.signal;
    }
    return 0;
}
