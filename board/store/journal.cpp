#include "board/store/journal.h"

#include <algorithm>
#include <cstdio>

#include "board/store/store.h"

namespace board {
namespace {

bool is_plain(char c) {
    return c > ' ' && c < 0x7f && c != '"' && c != '\\';
}

void append_escaped(std::string& text, char c) {
    if (is_plain(c) || c == ' ') {
        text += c;
    } else if (c == '"' || c == '\\') {
        text += {'\\', c};
    } else if (c == '\n') {
        text += "\\n";
    } else {
        char code[8];
        std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned char>(c));
        text += code;
    }
}

template <class Words>
void append_words(const Words& words) {
    std::string line;
    for (const std::string_view word : words) line += (line.empty() ? "" : " ") + quote(word);
    store().write(live_path("journal"), line + '\n', Writing::append);
}

}  // namespace

std::string quote(std::string_view word) {
    if (!word.empty() && std::all_of(word.begin(), word.end(), is_plain)) return std::string(word);
    std::string text = "\"";
    for (const char c : word) append_escaped(text, c);
    return text + '"';
}

void journal(const std::vector<std::string>& words) {
    append_words(words);
}

void journal(std::initializer_list<std::string_view> words) {
    append_words(words);
}

std::vector<std::string> journal_lines() {
    return read_lines(live_path("journal"));
}

void clear_journal() {
    store().remove(live_path("journal"));
}

}  // namespace board
