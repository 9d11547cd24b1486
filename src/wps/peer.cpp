#include <time.h>

#include "platform/records.h"
#include "platform/wps.h"
#include "src/driver/object.h"
#include "src/support/message.h"
#include "src/support/text.h"
#include "src/wps/state_code.h"

using namespace platform;

namespace {

// The driver's answer about the device at the other end.
struct DriverPeer {
    char device_name[32];
    char manufacturer[64];
    char model_name[32];
    char model_number[32];
    char serial_number[32];
    char reserved[8];
    char spare[312];  // the driver knows no limit
};
static_assert(offsetof(DriverPeer, spare) == 200);
static_assert(offsetof(DriverPeer, model_number) == 128);
static_assert(offsetof(DriverPeer, manufacturer) == 32);
static_assert(offsetof(DriverPeer, model_name) == 96);
static_assert(offsetof(DriverPeer, serial_number) == 160);

uint32_t query_state(const char* ifname) {
    int32_t status[8] = {};  // the driver answers with one, and knows no limit
    uint32_t length = 0;
    if (wsc_get_oid(ifname, kOidWscStatus, status, &length) == 0) return wps_peer_state(status[0]);
    print_error("apcp_get_wps_status RT_OID_WSC_QUERY_STATUS failed\n");
    return WPS_STATE_IDLE;
}

}  // namespace

int apcp_get_wsc_peerinfo_by_ifname(const char* ifname, wsc_peer_info* info) {
    if (info == nullptr) return 0;

    info->state = query_state(ifname);
    info->time = static_cast<uint32_t>(time(nullptr));
    DriverPeer peer = {};
    uint32_t length = 0;
    if (wsc_get_oid(ifname, kOidWscPeer, &peer, &length) != 0) {
        print_error(
            "apcp_get_wsc_peerinfo_by_ifname RT_OID_WSC_QUERY_PEER_INFO_ON_RUNNING failed\n");
        return 0;
    }
    copy_text(info->manufacturer, field_text(peer.manufacturer));
    copy_text(info->model_name, field_text(peer.model_name));
    copy_text(info->device_name, field_text(peer.device_name));
    copy_text(info->serial_number, field_text(peer.serial_number));
    copy_text(info->model_number, field_text(peer.model_number));
    return 1;
}
