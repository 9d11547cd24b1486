// Buttons and LEDs.
#include "board/host/entry.h"
#include "board/model/pins.h"
#include "board/model/switch.h"
#include "board/store/key_file.h"
#include "board/store/store.h"
#include "boardctl/verbs/host_records.h"
#include "boardctl/verbs/radio_names.h"
#include "platform/gpio.h"
#include "src/host/host.h"

namespace boardctl {
namespace {

Outcome buttons(Session& session, const Arguments&) {
    const hw_info hw = hardware_of(session);
    const Json reset = {{"button", "reset"},
                        {"pin", hw.reset_button_gpio},
                        {"pressed", PLATFORM_CALL(session.library, pushed_reset_button)() != 0}};
    const Json wps = {{"button", "wps"},
                      {"pin", hw.wps_button_gpio},
                      {"pressed", PLATFORM_CALL(session.library, pushed_wps_button)() != 0}};
    return {{{"buttons", {reset, wps}}}};
}

bool is_reset(const Arguments& arguments) {
    return arguments.text("BUTTON") == "reset";
}

Outcome move(Session& session, const Arguments& arguments, int level) {
    session.require_virtual("buttons to press from here");
    const hw_info hw = hardware_of(session);
    const int pin = is_reset(arguments) ? hw.reset_button_gpio : hw.wps_button_gpio;
    if (!board::set_pin_input(pin, level)) throw Failed("the board has no such button");
    return buttons(session, arguments);
}

Outcome press(Session& session, const Arguments& arguments) {
    return move(session, arguments, 0);
}

Outcome release(Session& session, const Arguments& arguments) {
    return move(session, arguments, 1);
}

Outcome held(Session& session, const Arguments& arguments) {
    constexpr int kSamples = 5;
    const int interval = arguments.number("--interval", 100);
    const int samples = arguments.number("--samples", kSamples);
    const Library& library = session.library;
    const auto check = is_reset(arguments) ? PLATFORM_CALL(library, check_default_button)
                                           : PLATFORM_CALL(library, check_wps_button);
    const Step step =
        session.perform("sampling the button", [&] { return check(interval, samples); });
    return {{{"held", step.result != 0}, {"samples", samples}, {"messages", step.messages}}};
}

constexpr const char* kRunStates[] = {"normal", "wps", "silent"};

Outcome leds(Session& session, const Arguments&) {
    const Library& library = session.library;
    char operation[64] = {};
    PLATFORM_CALL(library, get_run_led_op)(operation);
    const int state = PLATFORM_CALL(library, get_run_led_state)();
    led_silent_control silence{};
    HOST_CALL(library, get_led_silent_control)(&silence, 0);
    Json answer = {
        {"run_led_operation", operation},
        {"run_led_state", state >= 0 && state < 3 ? kRunStates[state] : "unknown"},
        {"silence", silence.mode == 0   ? "never"
                    : silence.mode == 1 ? "always"
                                        : std::to_string(silence.start_hour) + " to " +
                                              std::to_string(silence.end_hour) + " o'clock UTC"}};
    Json rows = Json::array();
    for (const Radio& radio : radios_of(session)) {
        const int pin = HOST_CALL(library, getsi_wifi_led_gpio)(0, radio.wl_mode);
        rows.push_back({{"radio", radio.main_ifname}, {"pin", pin}, {"lit", is_led_lit(pin)}});
    }
    if (session.is_virtual) {
        answer["run_led"] = board::KeyFile::load_or_empty(board::live_path("leds"))
                                .get("run")
                                .value_or("as it started");
        answer["port_leds"] = port_led_register(session);
    }
    answer["radio_leds"] = rows;
    return {answer};
}

struct Group {
    const char* name;
    const char* function;
};

constexpr Group kGroups[] = {
    {"run", "platform_run_led_control"},     {"wl", "platform_all_wl_led_control"},
    {"lan", "platform_all_lan_led_control"}, {"wan", "platform_all_wan_led_control"},
    {"usb", "platform_all_usb_led_control"},
};

Outcome set_leds(Session& session, const Arguments& arguments) {
    const int on = is_on(arguments.text("STATE")) ? 1 : 0;
    const std::string group = arguments.text("GROUP");
    if (group == "all")
        session.perform("update_led_silent_control", [&] {
            return PLATFORM_CALL(session.library, update_led_silent_control)(1, on);
        });
    for (const Group& each : kGroups) {
        if (group != each.name) continue;
        auto* const control = session.library.get<int(int)>(each.function);
        const Step step = session.perform(each.function, [&] { return control(on); });
        if (step.result == -1) throw Failed("the board has no such LED");
    }
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
        const std::string number = is_hours ? "2" : mode == "always" ? "1" : "0";
        const auto set = HOST_CALL(session.library, board_set_state);
        set(("set led_silence " + number).c_str());
        for (const char* const name : {"START", "END"}) {
            if (!is_hours) break;
            const int hour = arguments.number(name, 0);
            const std::string field = name == std::string("START") ? "start" : "end";
            set(("set led_silence_" + field + "_hour " + std::to_string(hour)).c_str());
        }
    }
    const int state = PLATFORM_CALL(session.library, get_run_led_state)();
    session.perform("update_led_silent_control", [&] {
        return PLATFORM_CALL(session.library, update_led_silent_control)(1, state != 2 ? 1 : 0);
    });
    return leds(session, arguments);
}

constexpr Option kButton = {"BUTTON", Kind::required, "reset or wps", {}, "reset|wps"};

constexpr Option kPressOptions[] = {
    kButton,
};
constexpr Option kReleaseOptions[] = {
    kButton,
};
constexpr Option kHeldOptions[] = {
    kButton,
    {"--samples", Kind::number, "5 when not given", {1, 10000}},
    {"--interval", Kind::number, "milliseconds between them, 100 when not given", {0, 60000}},
};
constexpr Option kSetLedsOptions[] = {
    {"GROUP", Kind::required, "run, wl, lan, wan, usb or all", {}, "run|wl|lan|wan|usb|all"},
    {"STATE", Kind::required, "on or off", {}, kOnOff},
};
constexpr Option kSilenceOptions[] = {
    {"MODE",
     Kind::required,
     "never, always, hours, or update: as they are stored",
     {},
     "never|always|hours|update"},
    {"START", Kind::positional, "first silent hour in UTC, with hours", {0, 23}},
    {"END", Kind::positional, "first hour that is not", {0, 23}},
};

}  // namespace

std::span<const Verb> panel_verbs() {
    static const Verb kVerbs[] = {
        {"buttons",
         "show",
         "Whether the buttons are pressed.",
         "  boardctl buttons",
         buttons,
         {},
         true},
        {"buttons", "press", "Presses a button of the virtual board and leaves it pressed.",
         "  boardctl buttons press reset", press, kPressOptions},
        {"buttons", "release", "Releases it.", "  boardctl buttons release reset", release,
         kReleaseOptions},
        {"buttons", "held", "Whether a button stays pressed for a while.",
         "  boardctl buttons held reset --samples 5 --interval 200", held, kHeldOptions},
        {"leds",
         "show",
         "What the LEDs show, and their silent hours.",
         "  boardctl leds",
         leds,
         {},
         true},
        {"leds", "set", "Switches LEDs.", "  boardctl leds set wl off\n  boardctl leds set all on",
         set_leds, kSetLedsOptions},
        {"leds", "silence", "Sets the silent hours, and the LEDs as they ask for.",
         "  boardctl leds silence hours 22 6\n  boardctl leds silence never\n"
         "  boardctl leds silence update",
         silence, kSilenceOptions},
    };
    return kVerbs;
}

}  // namespace boardctl
