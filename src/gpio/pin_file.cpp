#include "src/gpio/pin_file.h"

#include <iterator>
#include <optional>

#include "src/host/host.h"
#include "src/support/number.h"
#include "src/support/stream.h"
#include "src/support/text.h"
#include "src/support/tokens.h"

namespace platform {
namespace {

constexpr const char* kPinFile = "/sys/devices/platform/10005000.pinctrl/mt_gpio";
constexpr int kTitleLines = 2;

bool begins_with_number(std::string_view text) {
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    return !text.empty() && is_digit(text.front());
}

bool is_number(std::string_view text) {
    return begins_with_number(text) && is_digit(text.back()) &&
           text.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

// The file's lines, whole or cut at the buffer; what follows a cut is skipped.
class PinLines {
public:
    explicit PinLines(File& file) : file_(file) {}

    std::optional<std::string_view> next() {
        auto line = file_.read_line(buffer_);
        while (line && cut_) {
            cut_ = is_cut(*line);
            line = file_.read_line(buffer_);
        }
        if (line) cut_ = is_cut(*line);
        return line;
    }

private:
    bool is_cut(std::string_view line) const {
        return line.size() == sizeof buffer_ - 1 && !line.ends_with('\n');
    }

    File& file_;
    char buffer_[256];
    bool cut_ = false;
};

}  // namespace

bool parse_pin_line(std::string_view line, PinState& state) {
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) return false;
    Tokens head({line.data(), colon});
    const auto pin = head.next();
    if (!pin || !is_number(*pin) || pin->end() != line.data() + colon) return false;

    PinState read = {{leading_decimal(*pin)}};
    line.remove_prefix(colon + 1);
    Tokens numbers(line);
    for (size_t i = 1; i < std::size(read.numbers); ++i) {
        const auto number = numbers.next();
        const bool last = i + 1 == std::size(read.numbers);  // more may follow it directly
        if (!number || !(last ? begins_with_number(*number) : is_number(*number))) return false;
        read.numbers[i] = leading_decimal(*number);
    }
    state = read;
    return true;
}

int gpio_write_cmd(const char* word, int pin, int value) {
    TextBuffer<32> command;
    command.put(word).put(' ').put_decimal(pin).put(' ').put_decimal(value);
    return write_file(kPinFile, command.c_str());
}

int gpio_read_pin(int pin, PinState& state) {
    File file(open_for_reading(kPinFile));
    PinLines lines(file);
    for (int i = 0; i < kTitleLines; ++i) lines.next();
    PinState read;
    while (const auto line = lines.next()) {
        if (leading_decimal(*line) != pin) continue;  // most lines, of which no more need be read
        if (!parse_pin_line(*line, read) || read.pin() != pin) continue;
        state = read;
        return 1;
    }
    return file.failed() ? -1 : 0;
}

}  // namespace platform
