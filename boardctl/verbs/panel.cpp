// Buttons and LEDs.
#include "board/model/pins.h"
#include "board/model/switch.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

Outcome buttons(Session& session, const Arguments&) {
    const hw_info hw = hardware_of(session);
    const Json reset = {{"button", "reset"},
                        {"pin", hw.reset_button_gpio},
                        {"pressed", session.platform.pushed_reset_button() != 0}};
    const Json wps = {{"button", "wps"},
                      {"pin", hw.wps_button_gpio},
                      {"pressed", session.platform.pushed_wps_button() != 0}};
    return {{{"buttons", {reset, wps}}}};
}

bool is_reset(const Arguments& arguments) {
    return arguments.text("BUTTON") == "reset";
}

template <int kLevel>
Outcome move(Session& session, const Arguments& arguments) {
    session.require_virtual("buttons to press from here");
    const hw_info hw = hardware_of(session);
    const int pin = is_reset(arguments) ? hw.reset_button_gpio : hw.wps_button_gpio;
    if (!board::set_pin_input(pin, kLevel)) throw Failed("the board has no such button");
    return buttons(session, arguments);
}

Outcome held(Session& session, const Arguments& arguments) {
    constexpr int kSamples = 5;
    const int interval = arguments.number("--interval", 100);
    const int samples = arguments.number("--samples", kSamples);
    const Platform& platform = session.platform;
    const auto& check =
        is_reset(arguments) ? platform.check_default_button : platform.check_wps_button;
    const Step step = session.perform("sampling the button", check, interval, samples);
    return {{{"held", step.result != 0}, {"samples", samples}, {"messages", step.messages}}};
}

bool is_led_lit(int pin) {
    return board::pin_value(pin, board::PinColumn::is_output) == 1 &&
           board::pin_value(pin, board::PinColumn::output) == 0;
}

constexpr const char* kRunStates[] = {"normal", "wps", "silent"};

Outcome leds(Session& session, const Arguments&) {
    char operation[64] = {};
    session.platform.get_run_led_op(operation);
    const int state = session.platform.get_run_led_state();
    led_silent_control silence{};
    session.host.get_led_silent_control(&silence, 0);
    Json answer = {
        {"run_led_operation", operation},
        {"run_led_state", state >= 0 && state < 3 ? kRunStates[state] : "unknown"},
        {"silence", silence.mode == 0   ? "never"
                    : silence.mode == 1 ? "always"
                                        : std::to_string(silence.start_hour) + " to " +
                                              std::to_string(silence.end_hour) + " o'clock UTC"}};
    Json rows = Json::array();
    for (const Radio& radio : radios_of(session)) {
        const int pin = session.host.getsi_wifi_led_gpio(0, radio.wl_mode);
        rows.push_back({{"radio", radio.main_ifname}, {"pin", pin}, {"lit", is_led_lit(pin)}});
    }
    if (session.is_virtual) {
        answer["run_led"] = board::KeyFile::load_or_empty(board::live_path("leds"))
                                .get("run")
                                .value_or("as it started");
        const bool is_old_chip = field_text(hardware_of(session).switch_chip) == "mt7530";
        answer["port_leds"] =
            board::Switch().setting(is_old_chip ? "register.7d00" : "register.7c10");
    }
    answer["radio_leds"] = rows;
    return {answer};
}

struct Group {
    const char* name;
    Function<int(int)> Platform::*control;
};

constexpr Group kGroups[] = {
    {"run", &Platform::platform_run_led_control},
    {"wl", &Platform::platform_all_wl_led_control},
    {"lan", &Platform::platform_all_lan_led_control},
    {"wan", &Platform::platform_all_wan_led_control},
    {"usb", &Platform::platform_all_usb_led_control},
};

Outcome set_leds(Session& session, const Arguments& arguments) {
    const int on = is_on(arguments.text("STATE")) ? 1 : 0;
    const std::string group = arguments.text("GROUP");
    if (group == "all") session.perform(session.platform.update_led_silent_control, 1, on);
    for (const Group& each : kGroups)
        if (group == each.name && session.perform(session.platform.*each.control, on).result == -1)
            throw Failed("the board has no such LED");
    return leds(session, arguments);
}

// As the host's clock does: the stored hours first, then LEDs as they ask for.
Outcome silence(Session& session, const Arguments& arguments) {
    const std::string mode = arguments.text("MODE");
    if (mode != "update") {
        session.require_virtual("its host's silent hours for change");
        const bool is_hours = mode == "hours";
        if (is_hours != arguments.has("END") || is_hours != arguments.has("START"))
            throw UsageError("START and END go with hours, and with nothing else");
        session.store(std::string("set led_silence ") + (is_hours           ? "2"
                                                         : mode == "always" ? "1"
                                                                            : "0"));
        if (is_hours) {
            session.store("set led_silence_start_hour " + arguments.text("START"));
            session.store("set led_silence_end_hour " + arguments.text("END"));
        }
    }
    const int state = session.platform.get_run_led_state();
    session.perform(session.platform.update_led_silent_control, 1, state != 2 ? 1 : 0);
    return leds(session, arguments);
}

constexpr Option kButton = {"BUTTON", Kind::required, "reset or wps", "reset|wps"};

}  // namespace

Verbs panel_verbs() {
    return {
        Verb("buttons show*", "Whether the buttons are pressed.", "buttons", buttons),
        Verb("buttons press", "Presses a button of the virtual board and leaves it pressed.",
             "buttons press reset", move<0>, {kButton}),
        Verb("buttons release", "Releases it.", "buttons release reset", move<1>, {kButton}),
        Verb("buttons held", "Whether a button stays pressed for a while.",
             "buttons held reset --samples 5 --interval 200", held,
             {kButton,
              {"--samples", Kind::number, "5 when not given", {1, 10000}},
              {"--interval",
               Kind::number,
               "milliseconds between them, 100 when not given",
               {0, 60000}}}),
        Verb("leds show*", "What the LEDs show, and their silent hours.", "leds", leds),
        Verb("leds set", "Switches LEDs.", "leds set wl off\nleds set all on", set_leds,
             {{"GROUP", Kind::required, "run, wl, lan, wan, usb or all", "run|wl|lan|wan|usb|all"},
              {"STATE", Kind::required, "on or off", kOnOff}}),
        Verb("leds silence", "Sets the silent hours, and the LEDs as they ask for.",
             "leds silence hours 22 6\nleds silence never\nleds silence update", silence,
             {{"MODE", Kind::required, "never, always, hours, or update: as they are stored",
               "never|always|hours|update"},
              {"START", Kind::positional, "first silent hour in UTC, with hours", {0, 23}},
              {"END", Kind::positional, "first hour that is not", {0, 23}}}),
    };
}

}  // namespace boardctl
