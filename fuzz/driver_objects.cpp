// The driver's numbered objects: WPS status, PIN, the peer, the frequency.
#include <linux/wireless.h>

#include "fuzz/target.h"
#include "platform/wireless.h"
#include "platform/wps.h"

using namespace fuzz_target;

namespace {

constexpr uint16_t kPeer = 0x075C;
constexpr size_t kPeerSize = 200;
constexpr size_t kWordSize = 4;

std::string_view bytes;

// As many bytes as the driver has for the object, whatever the input holds.
int answer_object(void* record) {
    iw_point& data = static_cast<iwreq*>(record)->u.data;
    if ((data.flags & 0x8000) != 0) return bytes.empty() ? -1 : 0;
    if (bytes.empty()) return -1;
    const size_t size = std::min(bytes.size(), data.flags == kPeer ? kPeerSize : kWordSize);
    std::memcpy(data.pointer, bytes.data(), size);
    bytes.remove_prefix(size);
    data.length = static_cast<uint16_t>(size);
    return 0;
}

}  // namespace

void fuzz(Pieces& input) {
    Exact ifname(input.text());
    outside().on_ioctl[SIOCIWFIRSTPRIV + 1] = answer_object;
    bytes = input.rest();

    Output<wsc_peer_info> peer;
    if (apcp_get_wsc_peerinfo_by_ifname(ifname.c_str(), peer.get()) == 1) {
        CLAIM(is_terminated(peer->manufacturer) && is_terminated(peer->model_name));
        CLAIM(is_terminated(peer->device_name) && is_terminated(peer->serial_number));
        CLAIM(is_terminated(peer->model_number));
    } else {
        CLAIM(peer.untouched(offsetof(wsc_peer_info, manufacturer)));
    }
    CLAIM(peer->state >= WPS_STATE_IDLE && peer->state <= WPS_STATE_FAILED);

    Output<uint32_t> raw;
    const int state = wireless_get_wps_status(ifname.c_str(), raw.get());
    CLAIM(state != -1 || raw.untouched());
    wireless_get_wps_status(nullptr, nullptr);
    Output<char[32]> configured;
    CLAIM(wireless_get_wps_configured_ifname(*configured.get()) == 1 || configured.untouched());
    wireless_get_wps_pincode(ifname.c_str());

    Output<channel_spec> spec;
    wireless_api_get_current_channelspec("ra0", spec.get());
    wireless_set_wps_uuid(ifname.c_str(), reinterpret_cast<const uint8_t*>(ifname.c_str()), 1);
}
