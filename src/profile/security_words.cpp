#include "src/profile/security_words.h"

#include "platform/records.h"
#include "src/support/table.h"

namespace platform {
namespace {

struct Word {
    int32_t code;
    std::string_view word;
};

constexpr Word kAuthWords[] = {
    {WIRELESS_AUTH_OPEN,          "OPEN"         },
    {WIRELESS_AUTH_SHARED,        "SHARED"       },
    {WIRELESS_AUTH_WEPAUTO,       "WEPAUTO"      },
    {WIRELESS_AUTH_WPA,           "WPA"          },
    {WIRELESS_AUTH_WPAPSK,        "WPAPSK"       },
    {WIRELESS_AUTH_OPEN2,         "OPEN"         },
    {WIRELESS_AUTH_WPA2,          "WPA2"         },
    {WIRELESS_AUTH_WPA2PSK,       "WPA2PSK"      },
    {WIRELESS_AUTH_WPAPSKWPA2PSK, "WPAPSKWPA2PSK"},
    {WIRELESS_AUTH_WPA1WPA2,      "WPA1WPA2"     },
};

constexpr Word kCipherWords[] = {
    {WIRELESS_CIPHER_NONE,    "NONE"   },
    {WIRELESS_CIPHER_WEP,     "WEP"    },
    {WIRELESS_CIPHER_WEP2,    "WEP"    },
    {WIRELESS_CIPHER_TKIP,    "TKIP"   },
    {WIRELESS_CIPHER_AES,     "AES"    },
    {WIRELESS_CIPHER_TKIPAES, "TKIPAES"},
};

static_assert(is_key(kAuthWords, &Word::code) && is_key(kCipherWords, &Word::code));

}  // namespace

int auth_mode_to_str(int32_t code, std::string_view& word) {
    const Word* row = find_row(kAuthWords, &Word::code, code);
    word = row != nullptr ? row->word : "OPEN";
    return row != nullptr;
}

std::string_view auth_word(int32_t code) {
    std::string_view word;
    auth_mode_to_str(code, word);
    return word;
}

std::string_view cipher_word(int32_t code) {
    const Word* row = find_row(kCipherWords, &Word::code, code);
    return row != nullptr ? row->word : "NONE";
}

bool is_cipher(int32_t code) {
    return find_row(kCipherWords, &Word::code, code) != nullptr;
}

bool is_wep(int32_t cipher) {
    return cipher == WIRELESS_CIPHER_WEP || cipher == WIRELESS_CIPHER_WEP2;
}

bool has_group_key(int32_t cipher) {
    return cipher >= WIRELESS_CIPHER_TKIP && cipher <= WIRELESS_CIPHER_TKIPAES;
}

}  // namespace platform
