// The parameters of one call: read from its arguments, handed to the function, and what it filled.
#pragma once

#include <array>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "boardctl/call/call.h"
#include "boardctl/call/signature.h"

namespace boardctl::calls {

constexpr bool takes_argument(const Parameter& parameter) {
    return parameter.kind < Kind::filled_number;
}
constexpr bool is_answer(const Parameter& parameter) {
    return !takes_argument(parameter) || parameter.kind == Kind::changed_text ||
           parameter.kind == Kind::changed_record;
}

class Frame {
public:
    using Words = std::array<uintptr_t, 4>;

    Frame(const Function& function, const std::vector<std::string>& arguments,
          const Folders& folders);

    Words words();

    // What the call left, by its result. Throws Failed when it wrote past a buffer.
    void check_guards() const;
    nlohmann::ordered_json values(uintptr_t result) const;
    void write_files(uintptr_t result) const;

private:
    // A number, or a buffer with a guard behind its size bytes.
    struct Slot {
        uint64_t number = 0;
        bool null = false;
        size_t size = 0;
        std::vector<unsigned char> buffer;
        std::string file;  // takes what was filled

        void hold(std::string_view content, size_t room);
        std::string_view content() const;
    };

    bool take_option(std::string_view argument);
    void take(size_t place, const std::string& argument);
    std::string given_bytes(const Parameter& parameter, const std::string& argument) const;
    std::string given_record(const Parameter& parameter, const std::string& argument) const;
    void make_room(size_t place);
    void check_parts() const;
    const Slot* find(Kind kind) const;
    int64_t number_of(Kind kind) const;
    std::string_view used(size_t place, uintptr_t result) const;
    nlohmann::ordered_json value(size_t place, uintptr_t result) const;

    const Function& function_;
    const Folders& folders_;
    std::array<Slot, 4> slots_;
};

}  // namespace boardctl::calls
