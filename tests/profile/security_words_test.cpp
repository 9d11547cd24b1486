// The words that the library writes into a profile and those that it reads from a survey.
#include "src/profile/security_words.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "src/wireless/survey_table.h"

namespace {

using platform::cipher_word;

ap_entry read_back(std::string_view auth, std::string_view cipher) {
    ap_entry entry = {};
    const std::string line = "1   " + std::string(33, ' ') + "00:11:22:33:44:55   " +
                             std::string(auth) + '/' + std::string(cipher) + '\n';
    platform::SurveyLine(line).fill(entry, 0, 0);
    return entry;
}

TEST(SecurityWords, ReadBackAsTheirCodes) {
    const std::set<int32_t> not_in_a_survey = {WIRELESS_AUTH_SHARED, WIRELESS_AUTH_WEPAUTO,
                                               WIRELESS_AUTH_OPEN2};
    const std::set<int32_t> second_code = {WIRELESS_CIPHER_WEP2};
    for (int32_t code = -1; code < 32; ++code) {
        std::string_view word;
        if (platform::auth_mode_to_str(code, word) != 0 && !not_in_a_survey.contains(code)) {
            EXPECT_EQ(code, read_back(word, "AES").auth_mode) << word;
        }
        if (platform::is_cipher(code) && !second_code.contains(code)) {
            EXPECT_EQ(code, read_back("WPA", cipher_word(code)).encryption) << cipher_word(code);
        }
    }
}

}  // namespace
