// The parameters of one call: read from its arguments, handed to the function, and what it filled.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "border/row.h"

namespace border {

class Frame {
public:
    using Words = std::array<uintptr_t, 4>;
    using ReadFile = std::function<std::string(const std::string& path)>;

    // Arguments are words in the order of the parameters that take one; NAME=- gives no room for
    // what a parameter fills. Room that is given holds the fill byte. Throws BadArgument.
    Frame(const Function& function, const std::vector<std::string>& arguments,
          const ReadFile& read_file, char fill = '\0');

    Words words();

    // The parameter that the call wrote past, or null.
    const char* overrun() const;

    // What the call left in a parameter's buffer, by its result; the whole of it; and whether it
    // got none.
    std::string_view used(size_t place, uintptr_t result) const;
    std::string_view content(size_t place) const { return slots_[place].content(); }
    bool is_null(size_t place) const { return slots_[place].null; }

    // The file that is to take what the parameter was filled with; mostly none.
    const std::string& file(size_t place) const { return slots_[place].file; }

private:
    // A number, or a buffer with a guard behind its size bytes.
    struct Slot {
        uint64_t number = 0;
        bool null = false;
        size_t size = 0;
        std::vector<unsigned char> buffer;
        std::string file;

        void hold(std::string_view content, size_t room, char fill);
        std::string_view content() const;
    };

    bool take_option(std::string_view argument);
    void take(size_t place, const std::string& argument);
    std::string given_bytes(const Parameter& parameter, const std::string& argument) const;
    std::string given_record(const Parameter& parameter, const std::string& argument) const;
    void make_room(size_t place, char fill);
    void check_parts() const;
    const Slot* find(Kind kind) const;
    int64_t number_of(Kind kind) const;

    const Function& function_;
    const ReadFile& read_file_;
    std::array<Slot, 4> slots_;
};

// The number at the start of the bytes.
uint32_t number_at(std::string_view bytes);

// Bytes of one element of a parameter's buffer.
constexpr size_t unit_size(const Parameter& parameter) {
    return parameter.record != nullptr ? parameter.record->size : 1;
}

}  // namespace border
