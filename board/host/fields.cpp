#include "board/host/fields.h"

#include "board/host/field_tables.h"

namespace board {
namespace {

class Collector {
public:
    explicit Collector(State& target) : state_(target) {}

    std::vector<Field> collect() {
        members("set ", state_, kNumbers);
        members("set ", state_, kTexts);
        members("set ", state_, kLists);
        add("set model_name", std::span<char>(state_.pi));
        add("set led_silence", &state_.led_silence.mode);
        add("set led_silence_start_hour", &state_.led_silence.start_hour);
        add("set led_silence_end_hour", &state_.led_silence.end_hour);
        add("element first", std::span<uint8_t>(state_.element.first));
        add("element second", std::span<uint8_t>(state_.element.second));
        add("element third", std::span<uint8_t>(state_.element.third));
        add("element text", std::span<char>(state_.element.text));
        record("hw ", &state_.hw, kHardwareFields);
        record("helper 0 ", state_.sw.data(), kHelperFields);
        record("helper 1 ", state_.sw.data() + SW_INFO_HELPER_STRIDE, kHelperFields);
        for (size_t i = 0; i < state_.radios.size(); ++i)
            radio("radio " + std::to_string(i) + ' ', state_.radios[i]);
        return std::move(fields_);
    }

private:
    void add(std::string name, FieldPlace place) { fields_.push_back({std::move(name), place}); }

    template <class Owner, class Table>
    void members(const std::string& prefix, Owner& owner, const Table& table) {
        for (const auto& row : table) add(prefix + row.name, &(owner.*row.place));
    }

    template <class Table>
    void record(const std::string& prefix, void* base, const Table& table) {
        for (const RecordField& row : table) {
            char* const start = static_cast<char*>(base) + row.offset;
            if (row.text)
                add(prefix + row.name, std::span(start, row.width));
            else
                add(prefix + row.name, RecordNumber{start});
        }
    }

    void radio(const std::string& prefix, Radio& target) {
        members(prefix, target, kRadioTexts);
        add(prefix + "led_gpio", &target.led_gpio);
        add(prefix + "valid_channels", &target.valid_channels);
        record(prefix + "best_channel ", &target.best_channel, kChannelFields);
        add(prefix + "client ssid", &target.client.ssid);
        add(prefix + "client ap_mac", &target.client.ap_mac);
        add(prefix + "client speed_mbps", &target.client.speed_mbps);
        record(prefix + "client ", &target.client.channel, kChannelFields);
        add(prefix + "bss_count", &target.bss_count);
        for (size_t i = 0; i < target.bss.size(); ++i)
            record(prefix + "bss " + std::to_string(i) + ' ', &target.bss[i], kConfFields);
    }

    State& state_;
    std::vector<Field> fields_;
};

}  // namespace

std::vector<Field> fields_of(State& target) {
    return Collector(target).collect();
}

}  // namespace board
