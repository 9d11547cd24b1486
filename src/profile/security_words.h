// Authentication and cipher codes of the records, as the driver's words.
#pragma once

#include <stdint.h>

#include <string_view>

namespace platform {

// The driver's word of an authentication code. 1, or 0 with "OPEN" for a code that has none.
int auth_mode_to_str(int32_t code, std::string_view& word);
std::string_view auth_word(int32_t code);

// The driver's word of a cipher code, "NONE" for a code that has none.
std::string_view cipher_word(int32_t code);

bool is_cipher(int32_t code);
bool is_wep(int32_t cipher);
bool has_group_key(int32_t cipher);  // TKIP, AES or both

}  // namespace platform
