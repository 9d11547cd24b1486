#include "src/wireless/survey_table.h"

#include <string.h>

#include <algorithm>
#include <span>

#include "src/support/number.h"
#include "src/support/table.h"
#include "src/support/text.h"

namespace platform {
namespace {

using namespace std::string_view_literals;

// Fixed columns, counted from the start of the channel.
constexpr size_t kSsidColumn = 4;
constexpr size_t kSsidWidth = 32;
constexpr size_t kBssidColumn = 37;

// The name column ends so far after the start of the element's last hexadecimal column.
constexpr size_t kNameEnd = 29;

struct ColumnWord {
    std::string_view text;
    int32_t code;
};

constexpr ColumnWord kAuthColumn[] = {
    {"WPA",            WIRELESS_AUTH_WPA          },
    {"WPAPSK",         WIRELESS_AUTH_WPAPSK       },
    {"WPANONE",        7                          },
    {"WPA2",           WIRELESS_AUTH_WPA2         },
    {"WPA1WPA2",       WIRELESS_AUTH_WPA1WPA2     },
    {"WPA2PSK",        WIRELESS_AUTH_WPA2PSK      },
    {"WPAPSKWPA2PSK",  WIRELESS_AUTH_WPAPSKWPA2PSK},
    {"WPA1PSKWPA2PSK", WIRELESS_AUTH_WPAPSKWPA2PSK},
    {"OPEN",           WIRELESS_AUTH_OPEN         },
    {"WEP",            WIRELESS_AUTH_SHARED       },
};

constexpr ColumnWord kCipherColumn[] = {
    {"TKIP",    WIRELESS_CIPHER_TKIP   },
    {"AES",     WIRELESS_CIPHER_AES    },
    {"TKIPAES", WIRELESS_CIPHER_TKIPAES},
    {"NONE",    WIRELESS_CIPHER_NONE   },
    {"WEP",     WIRELESS_CIPHER_WEP    },
};

static_assert(is_key(kAuthColumn, &ColumnWord::text) && is_key(kCipherColumn, &ColumnWord::text));

int32_t code_of(std::span<const ColumnWord> words, std::string_view text, int32_t otherwise) {
    const ColumnWord* row = find_row(words, &ColumnWord::text, text);
    return row != nullptr ? row->code : otherwise;
}

bool is_answer(std::string_view token) {
    return token == "YES"sv || token == "NO"sv;
}

std::string_view without_trailing_blanks(std::string_view text) {
    size_t size = text.size();
    while (size > 0 && text[size - 1] == ' ') --size;
    return {text.data(), size};
}

void put_bssid(std::string_view token, ap_entry& entry) {
    const size_t length = std::min(token.size(), sizeof entry.bssid - 1);
    for (size_t i = 0; i < length; ++i) entry.bssid[i] = upper(token[i]);
    entry.bssid[length] = '\0';
}

// "WPA2PSK/AES": authentication and cipher.
void put_security(std::string_view token, ap_entry& entry) {
    constexpr size_t kTokenLength = 127;
    constexpr std::string_view kFastTransition = "FT-";
    entry.encryption = WIRELESS_CIPHER_NONE;
    entry.auth_mode = WIRELESS_AUTH_OPEN;
    if (token == "WEP"sv) {
        entry.encryption = WIRELESS_CIPHER_WEP;
        entry.auth_mode = WIRELESS_AUTH_SHARED;
        return;
    }
    token = {token.data(), std::min(token.size(), kTokenLength)};
    const size_t slash = token.find('/');
    if (slash == std::string_view::npos) return;

    std::string_view auth(token.data(), slash);
    if (has_prefix(auth, kFastTransition)) auth.remove_prefix(kFastTransition.size());
    token.remove_prefix(slash + 1);
    entry.auth_mode = code_of(kAuthColumn, auth, WIRELESS_AUTH_OPEN);
    entry.encryption = code_of(kCipherColumn, token, WIRELESS_CIPHER_NONE);
}

// "80(-55)": figure and dBm.
void put_signal(std::string_view token, ap_entry& entry) {
    const size_t bracket = token.find('(');
    entry.signal = leading_decimal({token.data(), std::min(bracket, token.size())});
    if (bracket == std::string_view::npos) return;
    token.remove_prefix(bracket + 1);
    entry.rssi = leading_decimal(token);
}

// Channels come from the air: their sums may wrap but never trap.
int32_t sum(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

void put_extension(std::string_view token, ap_entry& entry) {
    int32_t& centre = entry.channel.ext_channel;
    if (token == "ABOVE"sv) centre = sum(centre, 2);
    if (token == "BELOW"sv) centre = sum(centre, -2);
}

int32_t network_type(std::string_view token) {
    if (token == "Infra"sv) return 0;
    return token == "Adhoc"sv ? 1 : -1;
}

void put_wps(Tokens& tokens, ap_entry& entry) {
    const auto offered = tokens.next();
    if (!offered || *offered != "YES") return;
    const auto method = tokens.next();
    entry.flags &= ~uint32_t{AP_FLAG_WPS_PUSH_BUTTON};
    if (method && *method == "PBC"sv) entry.flags |= AP_FLAG_WPS_PUSH_BUTTON;
}

// At most 15 characters up to the end of its column. Its first word was cut out as a token, whose
// blank (of whatever kind) reads as a space unless nothing follows.
void put_name(std::string_view word, std::string_view column, char (&name)[16]) {
    memcpy(name, column.data(), std::min(column.size(), sizeof name));
    if (word.size() + 1 < sizeof name)
        name[word.size()] = name[word.size() + 1] != '\0' ? ' ' : '\0';
    name[sizeof name - 1] = '\0';
}

void put_element(Tokens& tokens, std::string_view line, vendor_element& element) {
    memset(&element, 0, sizeof element);
    auto token = tokens.next();
    if (token && is_answer(*token)) token = tokens.next();
    if (token && !is_answer(*token)) read_hex_pairs(*token, element.first);
    token = tokens.next();
    if (token && !is_answer(*token)) read_hex_pairs(*token, element.second);
    token = tokens.next();
    if (!token || is_answer(*token)) return;
    read_hex_pairs(*token, element.third);

    const char* const line_end = line.data() + line.size();
    const char* const column_end =
        token->data() + std::min(kNameEnd, static_cast<size_t>(line_end - token->data()));
    const auto word = tokens.next();
    if (!word || is_answer(*word) || word->data() >= column_end) return;
    put_name(*word, {word->data(), static_cast<size_t>(column_end - word->data())}, element.text);
}

}  // namespace

std::optional<std::string_view> SurveyLines::next() {
    const size_t end = rest_.find('\n');
    if (end == std::string_view::npos) return {};
    const std::string_view line(rest_.data(), end + 1);
    rest_.remove_prefix(end + 1);
    return line.size() < limit_ ? line : std::string_view(line.data(), 0);
}

SurveyLine::SurveyLine(std::string_view line)
    : channel_text_(Tokens(line).next().value_or(std::string_view())),
      channel_(leading_decimal(channel_text_)) {
    if (empty()) return;
    line.remove_prefix(static_cast<size_t>(channel_text_.data() - line.data()));
    line_ = line;
}

std::string_view SurveyLine::from(size_t column) const {
    const size_t skipped = std::min(column, line_.size());
    return {line_.data() + skipped, line_.size() - skipped};
}

void SurveyLine::fill(ap_entry& entry, int32_t base_mhz, uint32_t now) const {
    std::string_view ssid = from(kSsidColumn);
    ssid = {ssid.data(), std::min(ssid.size(), kSsidWidth)};
    if (ssid.ends_with('\n')) ssid.remove_suffix(1);
    copy_text(entry.ssid, without_trailing_blanks(ssid));

    Tokens tokens(from(kBssidColumn));
    if (const auto bssid = tokens.next()) put_bssid(*bssid, entry);
    if (const auto security = tokens.next()) put_security(*security, entry);
    if (entry.auth_mode == -1)
        entry.auth_mode =
            entry.encryption == WIRELESS_CIPHER_TKIP || entry.encryption == WIRELESS_CIPHER_AES
                ? WIRELESS_AUTH_WPAPSK
                : WIRELESS_AUTH_OPEN;
    if (const auto signal = tokens.next()) put_signal(*signal, entry);
    tokens.next();
    if (const auto extension = tokens.next()) put_extension(*extension, entry);
    const int64_t frequency = int64_t{channel_} * 5 + base_mhz;
    entry.channel.frequency_mhz = static_cast<int32_t>(frequency);
    if (const auto type = tokens.next()) entry.network_type = network_type(*type);
    put_wps(tokens, entry);
    entry.seen_at = now;
    put_element(tokens, line_, entry.element);
}

}  // namespace platform
