// Shell commands, formed whole in a bounded buffer and safe by construction.
//
// A command is one printf-style literal with %s, %d and %02x. Every text that fills a %s is
// escaped for the place where it stands, inside double quotes or outside, so that the shell hands
// the tool exactly the text's bytes. Harmless texts are left as they are, and so is the empty
// one: where it would be a word of its own, there is none. The literal is checked when the library
// is compiled: its directives against the arguments, and that it quotes in no other way.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

#include "src/support/text.h"

namespace platform {

class CommandArgument {
public:
    CommandArgument(const char* text) : text_(text_of(text)) {}
    CommandArgument(std::string_view text) : text_(text) {}
    CommandArgument(int32_t number) : number_(number) {}
    CommandArgument(uint8_t number) : number_(number) {}

    std::string_view text() const { return text_; }
    int32_t number() const { return number_; }

private:
    std::string_view text_;
    int32_t number_ = 0;
};

// The compiler's message names what is wrong with a format; neither is ever defined.
void command_format_does_not_match_its_arguments();
void command_format_is_not_safe_for_the_shell();

template <class... Arguments>
class CommandFormat {
public:
    consteval CommandFormat(const char* format) : format_(format) {
        constexpr bool kIsNumber[] = {std::is_integral_v<Arguments>..., false};
        size_t argument = 0;
        bool quoted = false;
        for (const char* at = format; *at != '\0'; ++at) {
            if (*at == '\'' || *at == '\\' || *at == '`' || *at == '$')
                command_format_is_not_safe_for_the_shell();
            quoted = quoted != (*at == '"');
            if (*at != '%') continue;
            ++at;
            const bool hex = at[0] == '0' && at[1] == '2' && at[2] == 'x';
            if (hex) at += 2;
            if (argument == sizeof...(Arguments) || (!hex && *at != 's' && *at != 'd') ||
                kIsNumber[argument] != (*at != 's'))
                command_format_does_not_match_its_arguments();
            ++argument;
        }
        if (quoted) command_format_is_not_safe_for_the_shell();
        if (argument != sizeof...(Arguments)) command_format_does_not_match_its_arguments();
    }

    const char* text() const { return format_; }

private:
    const char* format_;
};

// Appends the command's text. How many of its characters only escape others; nothing when it does
// not fit or when a text holds a NUL.
std::optional<size_t> form_command(Text& out, const char* format,
                                   std::span<const CommandArgument> arguments);

// A formed command, whatever room it has: what runs commands is compiled once.
class AnyCommand {
public:
    AnyCommand() = default;
    AnyCommand(const AnyCommand&) = delete;
    AnyCommand& operator=(const AnyCommand&) = delete;

    // Null for a command that did not fit whole: such a command is never run.
    const char* text() const { return text_; }

protected:
    static constexpr size_t kEscapeRoom = 256;

    void form(std::span<char> room, const char* format, std::span<const CommandArgument> arguments);

private:
    const char* text_ = nullptr;
};

// The size is that of the unescaped text with its end; what escaping adds has kEscapeRoom.
template <size_t kSize>
class Command : public AnyCommand {
public:
    template <class... Arguments>
    explicit Command(CommandFormat<std::type_identity_t<Arguments>...> format,
                     const Arguments&... arguments) {
        const CommandArgument list[] = {arguments..., int32_t{0}};
        form(room_, format.text(), std::span(list, sizeof...(arguments)));
    }

private:
    char room_[kSize + kEscapeRoom];
};

// Run by the C library's shell runner: its status, or -1 when there is no whole command.
int run_shell(const AnyCommand& command);

}  // namespace platform
