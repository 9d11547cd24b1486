#include "support/command.h"

#include <stdlib.h>

namespace platform {
namespace {

constexpr bool is_harmless(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("_-./:,=+@%").find(c) != std::string_view::npos;
}

// Outside quotes: as it is when harmless, else in single quotes.
void put_word(Text& out, std::string_view text) {
    bool harmless = true;
    for (const char c : text) harmless = harmless && is_harmless(c);
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

void put_inside_double_quotes(Text& out, std::string_view text) {
    for (const char c : text) {
        if (c == '"' || c == '\\' || c == '$' || c == '`') out.put('\\');
        out.put(c);
    }
}

}  // namespace

bool form_command(Text& out, const char* format, std::span<const CommandArgument> arguments) {
    bool quoted = false;
    bool clean = true;
    const CommandArgument* argument = arguments.data();
    for (const char* at = format; *at != '\0'; ++at) {
        if (*at != '%') {
            quoted = quoted != (*at == '"');
            out.put(*at);
            continue;
        }
        ++at;
        if (*at == 's') {
            clean = clean && argument->text().find('\0') == std::string_view::npos;
            if (quoted) {
                put_inside_double_quotes(out, argument->text());
            } else {
                put_word(out, argument->text());
            }
        } else if (*at == 'd') {
            out.put_decimal(argument->number());
        } else {
            out.put_hex_lower(static_cast<uint32_t>(argument->number()), 2);
            at += 2;
        }
        ++argument;
    }
    return clean && out.ok();
}

void AnyCommand::form(std::span<char> room, const char* format,
                      std::span<const CommandArgument> arguments) {
    Text text(room);
    text_ = form_command(text, format, arguments) ? text.c_str() : nullptr;
}

int run_shell(const AnyCommand& command) {
    return command.text() != nullptr ? system(command.text()) : -1;
}

}  // namespace platform
