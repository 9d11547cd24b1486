#include "platform/wps.h"
#include "src/driver/object.h"
#include "src/host/radios.h"
#include "src/support/command.h"
#include "src/wlmap/ifname.h"
#include "src/wps/state_code.h"

using namespace platform;

namespace {

// The named interface, or the main interface of every radio in list order.
template <class Step>
void for_interfaces(const char* ifname, Step step) {
    if (ifname != nullptr) {
        step(ifname);
        return;
    }
    for (const int32_t wl_mode : RadioList()) step(IfName::main(wl_mode).c_str());
}

// 802.1X and WPS exclude each other.
bool has_8021x(const char* ifname) {
    return wireless_check_8021x_enabled2(get_wl_mode_by_ifname(ifname)) != 0;
}

void wps_prepare_ifname(const char* ifname) {
    if (has_8021x(ifname)) return;
    run_shell(Command<256>("/sbin/iwpriv %s set WscConfMode=7", ifname));
    run_shell(Command<256>("/sbin/iwpriv %s set WscV2Support=0", ifname));
    run_shell(Command<256>("/sbin/iwpriv %s set WscConfStatus=2", ifname));
}

void wps_start_ifname(const char* ifname, const wps_start_request& request) {
    if (has_8021x(ifname)) return;
    const bool use_pin = request.use_pin != 0;
    run_shell(Command<256>("/sbin/iwpriv %s set WscMode=%d", ifname, use_pin ? 1 : 2));
    if (use_pin) run_shell(Command<256>("/sbin/iwpriv %s set WscPinCode=%d", ifname, request.pin));
    run_shell(Command<256>("/sbin/iwpriv %s set WscGetConf=1", ifname));
}

// A run may have changed the SSID: the configured one is put back.
void wps_stop_ifname(const char* ifname) {
    wireless_conf conf = {};
    read_wireless_conf(&conf, ifname);
    run_shell(
        Command<128>("/sbin/iwpriv %s set WscConfMode=%d", ifname, conf.wps_enable != 0 ? 6 : 0));
    char essid[256] = {};
    iwconfig_client_get_essid(ifname, essid);
    if (field_text(essid) == field_text(conf.ssid)) return;
    if (get_band_steering_running(0) != 0) update_wl_conf_from_band_steering(&conf, 0);
    run_shell(Command<256>("/sbin/iwpriv %s set SSID=\"%s\"", ifname, field_text(conf.ssid)));
}

// The driver's answer is wider than one word should it ever say more than is asked.
struct DriverWord {
    uint32_t value;
    uint32_t reserved[7];
};

bool read_word(const char* ifname, uint16_t oid, uint32_t& value) {
    DriverWord word = {};
    uint32_t length = 0;
    if (wsc_get_oid(ifname, oid, &word, &length) != 0) return false;
    value = word.value;
    return true;
}

int wps_query_status(const char* ifname, uint32_t* raw) {
    if (get_ifstatus(ifname) == 0) return WPS_STATE_IDLE;
    uint32_t status = 0;
    if (!read_word(ifname, kOidWscStatus, status)) return -1;
    if (raw != nullptr) *raw = status;
    return wps_control_state(status);
}

// The state of a run on one interface: an idle driver has not begun yet.
int running_state(const char* ifname, uint32_t* raw) {
    const int state = wps_query_status(ifname, raw);
    return state == WPS_STATE_IDLE ? int{WPS_STATE_RUNNING} : state;
}

// The state of a run on all radios: the first that has an outcome decides.
int running_state_of_all(uint32_t* raw) {
    for (const int32_t wl_mode : RadioList()) {
        const int state = running_state(IfName::main(wl_mode).c_str(), raw);
        if (state != WPS_STATE_RUNNING) return state;
    }
    return WPS_STATE_RUNNING;
}

}  // namespace

int wireless_prepare_wps(const char* ifname) {
    wireless_set_wps_led(ifname, 1);
    for_interfaces(ifname, wps_prepare_ifname);
    return 0;
}

int wireless_wps_start(const char* ifname, const wps_start_request* request) {
    if (request == nullptr) return 0;
    for_interfaces(ifname, [request](const char* name) { wps_start_ifname(name, *request); });
    return 1;
}

int wireless_wps_stop(const char* ifname) {
    wireless_set_wps_led(ifname, 0);
    for_interfaces(ifname, wps_stop_ifname);
    signal_start("led");
    return 1;
}

int wireless_get_wps_status(const char* ifname, uint32_t* raw) {
    TextBuffer<64> key;
    key.put("wps_status.").put(ifname != nullptr ? ifname : "both");
    const int state = key.ok() ? istatus_get_intvalue_direct(key.c_str()) : -1;
    if (state == -1) return WPS_STATE_IDLE;
    if (state != WPS_STATE_RUNNING) return state;
    return ifname != nullptr ? running_state(ifname, raw) : running_state_of_all(raw);
}

int wireless_get_wps_configured_ifname(char* ifname) {
    for (const int32_t wl_mode : RadioList()) {
        const IfName name = IfName::main(wl_mode);
        if (wps_query_status(name.c_str(), nullptr) != WPS_STATE_CONFIGURED) continue;
        if (ifname != nullptr) copy_text({ifname, PLATFORM_IFNAME_SIZE}, name.view());
        return 1;
    }
    return 0;
}

int wireless_get_wps_pincode(const char* ifname) {
    uint32_t pin = 0;
    return read_word(ifname, kOidWscPin, pin) ? static_cast<int>(pin) : -1;
}

int wireless_gen_pincode(const char* ifname) {
    if (ifname == nullptr) return -1;
    run_shell(Command<128>("/sbin/iwpriv %s set WscGenPinCode", ifname));
    return wireless_get_wps_pincode(ifname);
}
