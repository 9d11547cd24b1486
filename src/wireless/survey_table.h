// The driver's site-survey table.
#pragma once

#include <stdint.h>

#include <optional>
#include <string_view>

#include "platform/records.h"
#include "src/support/tokens.h"

namespace platform {

// The lines of a survey text, in place. Only a line that ends with a line feed counts; one of
// limit and more characters, its line feed included, reads as empty.
class SurveyLines {
public:
    SurveyLines(std::string_view text, size_t limit) : rest_(text), limit_(limit) {}
    std::optional<std::string_view> next();

private:
    std::string_view rest_;
    size_t limit_;
};

// One line of the table. Columns that are missing leave their fields alone.
class SurveyLine {
public:
    explicit SurveyLine(std::string_view line);

    bool empty() const { return channel_text_.empty(); }
    int32_t channel() const { return channel_; }

    // Everything but the channel itself. base_mhz is the frequency of channel 0, now the time.
    void fill(ap_entry& entry, int32_t base_mhz, uint32_t now) const;

private:
    std::string_view from(size_t column) const;

    std::string_view line_;  // from the channel on
    std::string_view channel_text_;
    int32_t channel_;
};

}  // namespace platform
