#include "run/power_on.h"

#include <algorithm>
#include <cstdio>

#include "host/state.h"
#include "live/flash.h"
#include "live/key_file.h"
#include "live/pins.h"
#include "live/radio_driver.h"
#include "live/tree.h"
#include "platform/flash.h"
#include "run/report.h"
#include "run/step.h"

namespace board::run {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kDefaultImage = "/etc_ro/wlan/MT7615_EEPROM.bin";
constexpr size_t kDriverFileLimit = 0x10000;

std::string factory_data() {
    const auto partition = find_partition("Factory");
    return partition ? read_partition(*partition) : "";
}

// A radio's data, told by its first four bytes.
struct RadioData {
    size_t offset;
    std::string head;

    bool good() const {
        return head.size() == 4 && head != std::string(4, '\0') && head != std::string(4, '\xff');
    }
};

RadioData data_of(const Radio& radio, const std::string& factory) {
    const std::string offset = radio_index_value(radio.main_ifname, "EEPROM_offset").value_or("0");
    const size_t start = std::min(std::stoul(offset, nullptr, 16), factory.size());
    return {start, factory.substr(start, 4)};
}

bool all_good(const std::string& factory) {
    const auto& radios = state().radios;
    return std::all_of(radios.begin(), radios.end(),
                       [&factory](const Radio& radio) { return data_of(radio, factory).good(); });
}

std::string driver_file() {
    const Radio& first = state().radios[0];
    return "/lib/firmware/" + radio_index_value(first.main_ifname, "EEPROM_name").value_or("");
}

std::string bytes_of(const std::string& data) {
    std::string text;
    for (const char byte : data) {
        char digits[8];
        std::snprintf(digits, sizeof digits, "%02x ", static_cast<unsigned char>(byte));
        text += digits;
    }
    return text;
}

void show_calibration(const std::string& before, const std::string& after) {
    std::vector<std::vector<std::string>> rows = {
        {"Radio", "Offset", "Before", "After", ""}
    };
    for (const Radio& radio : state().radios) {
        const RadioData data = data_of(radio, after);
        char offset[16];
        std::snprintf(offset, sizeof offset, "%05zx", data.offset);
        rows.push_back({radio.main_ifname, offset, bytes_of(data_of(radio, before).head),
                        bytes_of(data.head), data.good() ? "valid" : "erased"});
    }
    table(rows);
    std::printf("  %s holds %zu bytes\n", driver_file().c_str(),
                read_text(driver_file()).value_or("").size());
}

// In the order in which they must have been loaded, without those that cannot be.
struct Modules {
    Lines good;
    Lines bad;
};

Modules modules_of(const Platform& platform) {
    const KeyFile faults = KeyFile::load_or_empty("/etc/modules.conf");
    Modules modules;
    for (const char* const name : *PLATFORM_CALL(platform, module_list))
        (faults.get(name) ? modules.bad : modules.good).push_back(name);
    return modules;
}

void show_modules(const Lines& loaded, const Lines& bad) {
    std::string names;
    for (const std::string& name : bad) names += (names.empty() ? ": " : ", ") + name;
    std::printf("  %zu modules loaded, %zu failed%s\n", loaded.size(), bad.size(), names.c_str());
}

Lines expected_messages(const Lines& bad) {
    const KeyFile faults = KeyFile::load_or_empty("/etc/modules.conf");
    Lines lines;
    for (const std::string& name : bad) {
        const bool missing = faults.get(name) == "missing";
        lines.push_back("insmod " + name + " ==> Failed");
        lines.push_back(name + (missing ? " not exist" : " exist"));
    }
    return lines;
}

bool contains(const Lines& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

void check_pins(Lines& faults) {
    const hw_info& hw = state().hw;
    for (const int pin :
         {hw.run_led_gpio, hw.wps_button_gpio, hw.wl_led[0].gpio, hw.wl_led[1].gpio})
        if (pin != -1 && pin_value(pin, PinColumn::function) != 1)
            faults.push_back("pin " + std::to_string(pin) + " is not in its GPIO function");
}

Lines faults_of_start(const Step& step, const std::string& before, const std::string& after,
                      const Modules& modules) {
    Lines faults;
    const auto require = [&faults](bool good, const char* fault) {
        if (!good) faults.push_back(fault);
    };
    const size_t installs = step.count("mtd write - Factory");
    require(installs == (all_good(before) ? 0 : 1),
            "the default calibration image was not installed exactly when it was needed");
    require(all_good(after), "a radio has no calibration data");
    const std::string image = read_text(kDefaultImage).value_or("");
    require(installs == 0 || after.starts_with(image),
            "what was installed is not the default image");
    require(!all_good(before) || before == after, "good calibration data was changed");
    require(read_text(driver_file()) == after.substr(0, kDriverFileLimit),
            "the driver's calibration file is not the start of the partition");
    require(read_lines(live_path("modules")) == modules.good,
            "the modules were not loaded, all and in their order");
    for (const std::string& line : expected_messages(modules.bad))
        if (!contains(step.messages, line)) faults.push_back("no message \"" + line + "\"");
    check_pins(faults);
    return faults;
}

}  // namespace

Lines start_platform(const Platform& platform, Capture& capture) {
    const std::string before = factory_data();
    const Step step = perform(capture, "init_mt7622()", PLATFORM_CALL(platform, init_mt7622));
    const std::string after = factory_data();
    const Modules modules = modules_of(platform);
    show(step);
    heading("Calibration data and modules");
    show_calibration(before, after);
    show_modules(read_lines(live_path("modules")), modules.bad);
    return faults_of_start(step, before, after, modules);
}

int run_first_start(const Platform& platform, Capture& capture) {
    const Lines faults = start_platform(platform, capture);
    for (const std::string& fault : faults) std::printf("  FAULT: %s\n", fault.c_str());
    return faults.empty() ? 0 : 1;
}

}  // namespace board::run
