// How a function that crosses the border is described: EXPORT(name, role, "help", "example",
// outcome, parameters) for what the library offers, HOST(name, role, "help", outcome, parameters)
// for what it expects of its host. A row that does not fit the function's declaration does not
// compile. Nothing here needs more than the C library at run time.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>
#include <type_traits>

#include "border/record_fields.h"

namespace border {

// What stands for a parameter. Its declared type tells most: a row names the others itself.
enum class Kind : uint8_t {
    by_type,
    number,
    size,    // a number: the room of the buffer that the function fills
    offset,  // a number: where the part of the given bytes begins
    length,  // a number: how long that part is
    text,
    raw_text,      // a text, or bytes, zeros included
    changed_text,  // a text that the function changes in place
    mac,
    bytes,
    record,
    changed_record,  // a record, or some of them, that the function changes
    object,          // of a form that its owner alone knows
    filled_number,   // this and what follows takes no argument
    filled_text,
    filled_mac,
    filled_bytes,
    filled_record,
    filled_list,  // of wired stations, of the host's making
};

// How much of a filled buffer counts after the call.
enum class Used : uint8_t { whole, result, filled_number };

// What a number may be; it is handed on as a word, with its sign.
struct Range {
    int64_t first;
    uint64_t last;
};

struct Parameter {
    constexpr Parameter(const char* its_name = "", Kind its_kind = Kind::by_type,
                        uint32_t its_room = 1, Used its_use = Used::whole)
        : name(its_name), kind(its_kind), room(its_room), used(its_use) {}

    const char* name;
    Kind kind;
    uint32_t room;  // bytes, numbers or records of a buffer; 0: as the size argument says
    Used used;
    const char* unit = "";
    bool secret = false;  // pass phrases, keys, PINs, or what may hold one
    Range range = {};
    const Record* record = nullptr;
};

constexpr bool takes_argument(const Parameter& parameter) {
    return parameter.kind < Kind::filled_number;
}
constexpr bool is_answer(const Parameter& parameter) {
    return !takes_argument(parameter) || parameter.kind == Kind::changed_text ||
           parameter.kind == Kind::changed_record;
}

enum class Role : uint8_t {
    question,  // leaves the board as it is
    effect,
    constant,  // answers at once and looks at nothing
};

enum class Result : uint8_t { nothing, i32, u32, i64, text, record, object };

constexpr Role question = Role::question;
constexpr Role effect = Role::effect;
constexpr Role constant = Role::constant;

// What the result tells of a failure; a null pointer counts as 0.
struct Outcome {
    enum Meaning : uint8_t {
        no_failure,  // nothing fails, or the result does not tell
        always,      // the only result
        fails,
        untouched,  // it failed, and everything that it would have filled is as it was
    } meaning = no_failure;
    int64_t result = 0;
};
constexpr Outcome kNoFailure = {};
constexpr Outcome always(int64_t result) {
    return {Outcome::always, result};
}
constexpr Outcome fails(int64_t result) {
    return {Outcome::fails, result};
}
constexpr Outcome untouched(int64_t result) {
    return {Outcome::untouched, result};
}

// Work on the switch through its control socket. Without one the process ends.
enum class Socket : uint8_t {
    unused,
    own,     // opened and closed within the call
    needed,  // of the process: the caller opens and closes it
    opened,  // by this call, for the process
    closed,
};

struct Function {
    const char* name;
    Role role;
    const char* help;
    const char* example;  // its arguments as words; null for the host's functions
    Outcome outcome;
    Result result;
    const Record* record;  // of Result::record
    bool variadic;
    size_t count;
    std::array<Parameter, 4> parameters;
    bool secret = false;      // of the result
    bool descriptor = false;  // the result is the caller's to close
    Socket socket = Socket::unused;
};

// An exported variable.
struct Object {
    const char* name;
    const char* help;
};

// The table.
std::span<const Function> exports();
std::span<const Object> exported_objects();
std::span<const Function> host_functions();

// The export that opens or closes the process's control socket.
const Function& export_that(Socket does);

constexpr Parameter number(const char* name, const char* unit) {
    Parameter parameter = {name};
    parameter.unit = unit;
    return parameter;
}
constexpr Parameter size(const char* name) {
    return {name, Kind::size};
}
constexpr Parameter length(const char* name) {
    return {name, Kind::length};
}
constexpr Parameter bytes(const char* name) {
    return {name, Kind::bytes};
}
constexpr Parameter changed(const char* name, uint32_t room = 1, Used used = Used::whole) {
    return {name, Kind::changed_record, room, used};
}
constexpr Parameter text(const char* name, uint32_t room, Used used = Used::whole) {
    return {name, Kind::filled_text, room, used};
}
constexpr Parameter filled(const char* name, uint32_t room, Used used = Used::whole) {
    return {name, Kind::by_type, room, used};
}
constexpr Parameter block(const char* name, uint32_t room) {
    return {name, Kind::filled_bytes, room};
}
constexpr Parameter secret(Parameter parameter) {
    parameter.secret = true;
    return parameter;
}

consteval Function secret(Function function) {
    function.secret = true;
    return function;
}
consteval Function gives_descriptor(Function function) {
    function.descriptor = true;
    return function;
}
consteval Function on_socket(Socket socket, Function function) {
    function.socket = socket;
    return function;
}

template <class Type>
consteval Kind kind_of_type() {
    using Target = std::remove_pointer_t<Type>;
    constexpr bool kConst = std::is_const_v<Target>;
    using Plain = std::remove_const_t<Target>;
    if (std::is_integral_v<Type>) return Kind::number;
    if (record_of<Plain> != nullptr) return kConst ? Kind::record : Kind::filled_record;
    if (std::is_same_v<Plain, char>) return kConst ? Kind::text : Kind::filled_text;
    if (std::is_same_v<Plain, uint8_t>) return kConst ? Kind::mac : Kind::filled_mac;
    if (std::is_void_v<Plain>) return kConst ? Kind::bytes : Kind::filled_bytes;
    if (std::is_same_v<Target, uint32_t> || std::is_same_v<Target, int32_t>)
        return Kind::filled_number;
    if (std::is_same_v<Target, wired_station_list>) return Kind::filled_list;
    return Kind::object;
}

// Whether a row may call a parameter something else than its type tells.
constexpr bool may_be(Kind by_type, Kind kind) {
    switch (by_type) {
        case Kind::number:
            return kind <= Kind::length;
        case Kind::filled_text:
            return kind == Kind::changed_text;
        case Kind::mac:
            return kind == Kind::bytes;
        case Kind::filled_mac:
            return kind == Kind::filled_bytes;
        case Kind::bytes:
            return kind == Kind::raw_text || kind == Kind::object;
        case Kind::filled_bytes:
            return kind == Kind::object;
        case Kind::filled_record:
            return kind == Kind::changed_record;
        default:
            return false;
    }
}

template <class Type>
constexpr Parameter checked(Parameter parameter) {
    constexpr Kind kByType = kind_of_type<Type>();
    if (parameter.kind == Kind::by_type) parameter.kind = kByType;
    if (parameter.kind != kByType && !may_be(kByType, parameter.kind))
        throw "the kind does not fit the declared type";
    const bool buffer = parameter.kind == Kind::filled_text || parameter.kind == Kind::filled_bytes;
    if (parameter.kind == Kind::filled_mac) parameter.room = 6;
    if (buffer && parameter.room == 1) throw "a buffer without its room";
    if constexpr (std::is_integral_v<Type>)
        parameter.range = {std::numeric_limits<Type>::min(), std::numeric_limits<Type>::max()};
    else
        parameter.record = record_of<std::remove_const_t<std::remove_pointer_t<Type>>>;
    if (parameter.record != nullptr)
        for (const Field& field : parameter.record->fields) parameter.secret |= field.secret;
    return parameter;
}

template <class Type>
consteval Result result_kind() {
    if (std::is_void_v<Type>) return Result::nothing;
    if (std::is_same_v<Type, int32_t>) return Result::i32;
    if (std::is_same_v<Type, uint32_t>) return Result::u32;
    if (std::is_integral_v<Type>) return Result::i64;
    if (std::is_same_v<std::remove_const_t<std::remove_pointer_t<Type>>, char>) return Result::text;
    return record_of<std::remove_const_t<std::remove_pointer_t<Type>>> != nullptr ? Result::record
                                                                                  : Result::object;
}

constexpr size_t words_of(std::string_view text) {
    size_t words = 0;
    for (size_t i = 0; i < text.size(); ++i)
        words += text[i] != ' ' && (i == 0 || text[i - 1] == ' ') ? 1 : 0;
    return words;
}

template <bool kVariadic, class Returned, class... Types>
struct Rows {
    template <class... Parameters>
    static constexpr Function host(const char* name, Role role, const char* help, Outcome outcome,
                                   const Parameters&... parameters) {
        static_assert(sizeof...(Parameters) == sizeof...(Types), "parameters of another number");
        using Target = std::remove_const_t<std::remove_pointer_t<Returned>>;
        return {name,
                role,
                help,
                nullptr,
                outcome,
                result_kind<Returned>(),
                record_of<Target>,
                kVariadic,
                sizeof...(Types),
                {checked<Types>(parameters)...}};
    }

    template <class... Parameters>
    static consteval Function exported(const char* name, Role role, const char* help,
                                       const char* example, Outcome outcome,
                                       const Parameters&... parameters) {
        Function function = host(name, role, help, outcome, parameters...);
        function.example = example;
        size_t arguments = 0;
        for (size_t i = 0; i < function.count; ++i) {
            if (function.parameters[i].kind == Kind::object) throw "a type without a kind";
            arguments += takes_argument(function.parameters[i]) ? 1 : 0;
        }
        if (words_of(example) != arguments) throw "an example with other arguments";
        if ((role == Role::constant) != (outcome.meaning == Outcome::always))
            throw "a constant has one result";
        return function;
    }
};

// Of a declared function; the types alone count.
template <class Returned, class... Types>
Rows<false, Returned, Types...> rows_of(Returned (*)(Types...));
template <class Returned, class... Types>
Rows<true, Returned, Types...> rows_of(Returned (*)(Types..., ...));

#define EXPORT(name, ...) decltype(::border::rows_of(::name))::exported(#name, __VA_ARGS__)
#define OBJECT(name, help)                                    \
    ::border::Object {                                        \
        sizeof(decltype(::name)) != 0 ? #name : nullptr, help \
    }
#define HOST(name, ...) decltype(::border::rows_of(::name))::host(#name, __VA_ARGS__)

}  // namespace border
