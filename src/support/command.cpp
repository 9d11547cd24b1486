#include "src/support/command.h"

#include <stdlib.h>

namespace platform {
namespace {

struct CharacterSet {
    bool has[256] = {};
};

constexpr CharacterSet harmless_characters() {
    CharacterSet set;
    for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                         "0123456789_-./:,=+@%"))
        set.has[static_cast<uint8_t>(c)] = true;
    return set;
}

constexpr CharacterSet kHarmless = harmless_characters();

// Outside quotes: as it is when harmless, else in single quotes.
void put_word(Text& out, std::string_view text) {
    bool harmless = true;
    for (const char c : text) harmless = harmless && kHarmless.has[static_cast<uint8_t>(c)];
    if (harmless) {
        out.put(text);
        return;
    }
    out.put('\'');
    for (const char c : text) {
        if (c == '\'') {
            out.put("'\\''");
        } else {
            out.put(c);
        }
    }
    out.put('\'');
}

// What needs no backslash is put in one piece.
void put_inside_double_quotes(Text& out, std::string_view text) {
    size_t put = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '"' && c != '\\' && c != '$' && c != '`') continue;
        out.put({text.data() + put, i - put}).put('\\');
        put = i;
    }
    out.put({text.data() + put, text.size() - put});
}

}  // namespace

std::optional<size_t> form_command(Text& out, const char* format,
                                   std::span<const CommandArgument> arguments) {
    bool quoted = false;
    bool clean = true;
    size_t escapes = 0;
    std::string_view rest = format;
    for (const CommandArgument& argument : arguments) {
        const std::string_view literal(rest.data(), rest.find('%'));
        for (const char c : literal) quoted = quoted != (c == '"');
        out.put(literal);
        rest.remove_prefix(literal.size() + 1);
        if (rest[0] == 's') {
            clean = clean && argument.text().find('\0') == std::string_view::npos;
            const size_t start = out.size();
            if (quoted) {
                put_inside_double_quotes(out, argument.text());
            } else {
                put_word(out, argument.text());
            }
            escapes += out.size() - start - argument.text().size();
        } else if (rest[0] == 'd') {
            out.put_decimal(argument.number());
        } else {
            out.put_hex_lower(static_cast<uint32_t>(argument.number()), 2);
        }
        rest.remove_prefix(rest[0] == '0' ? std::string_view("02x").size() : 1);
    }
    out.put(rest);
    if (!clean || !out.ok()) return {};
    return escapes;
}

void AnyCommand::form(std::span<char> room, const char* format,
                      std::span<const CommandArgument> arguments) {
    Text text(room);
    const auto escapes = form_command(text, format, arguments);
    const bool fits = escapes && text.size() - *escapes < room.size() - kEscapeRoom;
    text_ = fits ? text.c_str() : nullptr;
}

int run_shell(const AnyCommand& command) {
    return command.text() != nullptr ? system(command.text()) : -1;
}

}  // namespace platform
