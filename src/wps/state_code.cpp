#include "src/wps/state_code.h"

#include "platform/records.h"

namespace platform {
namespace {

// The driver's status codes.
constexpr uint32_t kIdle = 1;  // and 0
constexpr uint32_t kFailed = 2;
constexpr uint32_t kStarted = 3;
constexpr uint32_t kFirstError = 30;
constexpr uint32_t kLastError = 33;
constexpr uint32_t kConfigured = 34;
constexpr int32_t kFirstFault = 0x0101;

}  // namespace

int wps_control_state(uint32_t status) {
    if (status <= kIdle) return WPS_STATE_IDLE;
    if (status == kFailed || (status >= kFirstError && status <= kLastError))
        return WPS_STATE_FAILED;
    return status == kConfigured ? WPS_STATE_CONFIGURED : WPS_STATE_RUNNING;
}

uint32_t wps_peer_state(int32_t status) {
    if (status >= kFirstFault) return WPS_STATE_FAILED;
    if (status == static_cast<int32_t>(kStarted)) return WPS_STATE_STARTED;
    return static_cast<uint32_t>(wps_control_state(static_cast<uint32_t>(status)));
}

}  // namespace platform
