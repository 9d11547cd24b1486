// Texts in commands: the shell must take each back for exactly its bytes.
#include "src/support/command.h"

#include <vector>

#include "fuzz/target.h"

using namespace fuzz_target;
using platform::CommandArgument;

namespace {

// The words of a command as a POSIX shell reads single quotes, double quotes and backslashes.
// Nothing else of the shell's own may stand in it unquoted.
std::vector<std::string> words_of(std::string_view command) {
    constexpr std::string_view kPlain = "_-./:,=+@%";
    std::vector<std::string> words;
    bool in_word = false;
    char quote = '\0';
    for (size_t i = 0; i < command.size(); ++i) {
        const char c = command[i];
        if (quote == '\0' && c == ' ') {
            in_word = false;
            continue;
        }
        if (!in_word) words.emplace_back();
        in_word = true;
        if (c == quote) {
            quote = '\0';
        } else if (quote == '\'') {
            words.back() += c;
        } else if (c == '\\') {
            CLAIM(++i < command.size());
            const char next = command[i];
            CLAIM(quote == '\0' || std::string_view("\"\\$`").find(next) != kPlain.npos);
            words.back() += next;
        } else if (quote == '"') {
            CLAIM(c != '$' && c != '`');
            words.back() += c;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else {
            CLAIM(std::isalnum(static_cast<unsigned char>(c)) || kPlain.find(c) != kPlain.npos);
            words.back() += c;
        }
    }
    CLAIM(quote == '\0');
    return words;
}

}  // namespace

void fuzz(Pieces& input) {
    const std::string name = input.text();
    const std::string text(input.rest());
    const std::unique_ptr<char[]> room(new char[256]);
    platform::Text out({room.get(), 256});
    const CommandArgument arguments[] = {std::string_view(name), std::string_view(text),
                                         std::string_view(text), int32_t{-7}, uint8_t{0x0A}};
    if (!platform::form_command(out, "tool -i%s K=%s \"%s;\" %d=%02x", arguments)) return;
    CLAIM(text.find('\0') == text.npos);
    const std::vector<std::string> expected = {"tool", "-i" + name, "K=" + text, text + ";",
                                               "-7=0a"};
    CLAIM(words_of(out.c_str()) == expected);
}
