// The Wi-Fi driver behind the library's ioctls: numbered objects and the survey text.
#pragma once

#include <array>
#include <cerrno>
#include <cstring>
#include <map>
#include <string>

#include "support/board.h"

namespace harness {

// The kernel's wireless request with a data pointer.
struct DriverRequest {
    char name[16];
    char* data;
    uint16_t length;
    uint16_t flags;
    uint8_t reserved[4];
};
static_assert(sizeof(DriverRequest) == 32);

class Driver : public Board {
protected:
    Driver() {
        on_ioctl[0x8BE1] = [this](void* request) { return take_object(request); };
        on_ioctl[0x8BED] = [this](void* request) { return take_survey(request); };
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
    std::string note(DriverRequest request) {
        request.data = nullptr;
        memcpy(requests.emplace_back().data(), &request, sizeof request);
        return {request.name, strnlen(request.name, sizeof request.name)};
    }

    int take_object(void* record) {
        DriverRequest& request = *static_cast<DriverRequest*>(record);
        char number[8];
        std::snprintf(number, sizeof number, " %04x", request.flags);
        const auto row = objects.find(note(request) + number);
        if ((request.flags & 0x8000) != 0) payload.assign(request.data, request.length);
        errno = EOPNOTSUPP;
        if (row == objects.end()) return -1;
        if ((request.flags & 0x8000) != 0) return 0;
        memcpy(request.data, row->second.data(), row->second.size());
        request.length = static_cast<uint16_t>(row->second.size());
        return 0;
    }

    int take_survey(void* record) {
        DriverRequest& request = *static_cast<DriverRequest*>(record);
        note(request);
        errno = EOPNOTSUPP;
        if (survey.empty()) return -1;
        const size_t size = std::min<size_t>(survey.size(), request.length);
        memcpy(request.data, survey.data(), size);
        request.length = survey_length != 0 ? survey_length : static_cast<uint16_t>(size);
        return 0;
    }
};

}  // namespace harness
