#include "board/store/words.h"

#include <algorithm>

namespace board {
namespace {

constexpr std::string_view kBlanks = " \t\r";

class Splitter {
public:
    explicit Splitter(std::string_view line) : rest_(line) {}

    std::optional<std::vector<std::string>> split() {
        std::vector<std::string> words;
        for (skip_blanks(); !rest_.empty() && rest_[0] != '#'; skip_blanks()) {
            const auto word = rest_[0] == '"' ? quoted_word() : plain_word();
            if (!word) return std::nullopt;
            words.push_back(*word);
        }
        return words;
    }

private:
    void skip_blanks() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
    }

    char take() {
        const char c = rest_[0];
        rest_.remove_prefix(1);
        return c;
    }

    std::optional<std::string> plain_word() {
        const std::string word(rest_.substr(0, rest_.find_first_of(kBlanks)));
        rest_.remove_prefix(word.size());
        return word;
    }

    std::optional<std::string> quoted_word() {
        std::string word;
        take();
        while (!rest_.empty() && rest_[0] != '"') {
            const char c = take();
            word += c == '\\' ? escaped() : c;
        }
        if (rest_.empty()) return std::nullopt;
        take();
        return word;
    }

    // After a backslash: \n, \xHH, or the character itself.
    char escaped() {
        if (rest_.empty()) return '\\';
        const char c = take();
        if (c == 'n') return '\n';
        const auto code =
            c == 'x' ? to_number<unsigned char>(rest_.substr(0, 2), 16) : std::nullopt;
        if (!code) return c;
        rest_.remove_prefix(2);
        return static_cast<char>(*code);
    }

    std::string_view rest_;
};

}  // namespace

std::optional<std::vector<std::string>> split_words(std::string_view line) {
    return Splitter(line).split();
}

bool is_one_of(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::optional<std::array<uint8_t, 6>> to_mac(std::string_view word) {
    constexpr size_t kStep = 3;
    std::array<uint8_t, 6> mac;
    if (word.size() != kStep * mac.size() - 1) return std::nullopt;
    for (size_t i = 0; i < mac.size(); ++i) {
        const auto byte = to_number<uint8_t>(word.substr(kStep * i, 2), 16);
        if (!byte || (i > 0 && word[kStep * i - 1] != ':')) return std::nullopt;
        mac[i] = *byte;
    }
    return mac;
}

}  // namespace board
