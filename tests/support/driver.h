// The Wi-Fi driver behind the library's ioctls: numbered objects and the survey text.
#pragma once

#include <linux/wireless.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <map>
#include <string>

#include "tests/support/board.h"
#include "tests/support/rows.h"

namespace harness {

// A record of 'x' between two guards.
template <class T>
struct Guarded {
    char before[64];
    T record;
    char after[64];

    Guarded() { memset(this, 'x', sizeof *this); }
    // Nothing was written but the record up to there.
    bool intact_from(const void* end) const {
        return is_fresh(before, &record) && is_fresh(end, this + 1);
    }

private:
    static bool is_fresh(const void* from, const void* to) {
        const char* const first = static_cast<const char*>(from);
        const auto size = static_cast<size_t>(static_cast<const char*>(to) - first);
        return *first == 'x' && memcmp(first, first + 1, size - 1) == 0;
    }
};

class Driver : public Board {
protected:
    Driver() {
        on_ioctl[0x8BE1] = [this](void* request) { return take_object(request); };
        on_ioctl[0x8BED] = [this](void* request) { return take_survey(request); };
    }

    // The journal since the last time, as text.
    std::string taken() {
        std::string text;
        for (const std::string& line : journal()) text += line + '\n';
        clear_journal();
        return text;
    }

    // Every request as the kernel got it, its pointer zeroed, and the payload of the last set.
    std::vector<std::array<uint8_t, 32>> requests;
    std::string payload;

    // The driver refuses an object without an entry: "ra0 0751", with 0x8000 for a set.
    std::map<std::string, std::string> objects;
    static std::string word(uint32_t value) {
        return {reinterpret_cast<const char*>(&value), sizeof value};
    }

    std::string survey;          // empty: refused
    uint16_t survey_length = 0;  // what the driver reports instead of the text's length, unless 0

private:
    std::string note(iwreq request) {
        request.u.data.pointer = nullptr;
        memcpy(requests.emplace_back().data(), &request, sizeof request);
        errno = EOPNOTSUPP;  // of a refusal
        return {request.ifr_name, strnlen(request.ifr_name, sizeof request.ifr_name)};
    }

    int take_object(void* record) {
        iw_point& data = static_cast<iwreq*>(record)->u.data;
        char number[8];
        std::snprintf(number, sizeof number, " %04x", data.flags);
        const auto row = objects.find(note(*static_cast<iwreq*>(record)) + number);
        const bool set = (data.flags & 0x8000) != 0;
        if (set) payload.assign(static_cast<const char*>(data.pointer), data.length);
        if (row == objects.end()) return -1;
        if (!set) put(data, row->second, row->second.size());
        return 0;
    }

    int take_survey(void* record) {
        iw_point& data = static_cast<iwreq*>(record)->u.data;
        note(*static_cast<iwreq*>(record));
        if (survey.empty()) return -1;
        put(data, survey, std::min<size_t>(survey.size(), data.length));
        if (survey_length != 0) data.length = survey_length;
        return 0;
    }

    static void put(iw_point& data, const std::string& text, size_t size) {
        memcpy(data.pointer, text.data(), size);
        data.length = static_cast<uint16_t>(size);
    }
};

}  // namespace harness
