// How a row of the table of exported functions is written: FUNCTION(name, "help", parameters).
// A row whose parameters do not fit the function's declaration does not compile.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <type_traits>

#include "boardctl/call/record_fields.h"
#include "boardctl/call/words.h"

namespace boardctl::calls {

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
    filled_number,   // this and what follows takes no argument
    filled_text,
    filled_mac,
    filled_bytes,
    filled_record,
    filled_list,  // of wired stations, of the host's making
};

// How much of a filled buffer counts after the call.
enum class Used : uint8_t { whole, result, filled_number };

struct Parameter {
    constexpr Parameter(const char* its_name = "", Kind its_kind = Kind::by_type,
                        uint32_t its_room = 1, Used its_use = Used::whole)
        : name(its_name), kind(its_kind), room(its_room), used(its_use) {}

    const char* name;
    Kind kind;
    uint32_t room;  // bytes or records of a buffer; 0: as the size argument says
    Used used;
    Range range = {};
    const Record* record = nullptr;
};

enum class Result : uint8_t { nothing, i32, u32, text, record };

struct Function {
    const char* name;
    const char* help;
    Result result;
    const Record* record;  // of Result::record
    bool needs_socket;     // works through the process's switch control socket
    size_t count;
    std::array<Parameter, 4> parameters;
};

// The table, by the headers that declare the functions.
std::span<const Function> system_functions();   // flash, frame, gpio, profile
std::span<const Function> network_functions();  // switch, wireless, wlmap, wps

constexpr Parameter size(const char* name) {
    return {name, Kind::size};
}
constexpr Parameter length(const char* name) {
    return {name, Kind::length};
}
constexpr Parameter bytes(const char* name) {
    return {name, Kind::bytes};
}
constexpr Parameter text(const char* name, uint32_t room, Used used = Used::whole) {
    return {name, Kind::filled_text, room, used};
}
constexpr Parameter filled(const char* name, uint32_t room, Used used) {
    return {name, Kind::by_type, room, used};
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
    if (std::is_same_v<Target, uint32_t>) return Kind::filled_number;
    if (std::is_same_v<Target, wired_station_list>) return Kind::filled_list;
    throw "a type without a kind";
}

// Whether a row may call a parameter something else than its type tells.
consteval bool may_be(Kind by_type, Kind kind) {
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
            return kind == Kind::raw_text;
        case Kind::filled_record:
            return kind == Kind::changed_record;
        default:
            return false;
    }
}

template <class Type>
consteval Parameter checked(Parameter parameter) {
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
    return parameter;
}

template <class Type>
consteval Result result_kind() {
    if (std::is_void_v<Type>) return Result::nothing;
    if (std::is_same_v<Type, int32_t>) return Result::i32;
    if (std::is_same_v<Type, uint32_t>) return Result::u32;
    if (std::is_same_v<Type, const char*>) return Result::text;
    if (std::is_pointer_v<Type>) return Result::record;
    throw "a result without a kind";
}

template <class Type>
struct Signature;

template <class Returned, class... Types>
struct Signature<Returned(Types...)> {
    template <class... Parameters>
    static consteval Function row(const char* name, const char* help,
                                  const Parameters&... parameters) {
        static_assert(sizeof...(Parameters) == sizeof...(Types), "parameters of another number");
        using Target = std::remove_const_t<std::remove_pointer_t<Returned>>;
        return {name,
                help,
                result_kind<Returned>(),
                record_of<Target>,
                false,
                sizeof...(Types),
                {checked<Types>(parameters)...}};
    }
};

consteval Function on_socket(Function function) {
    function.needs_socket = true;
    return function;
}

#define FUNCTION(name, ...) Signature<decltype(::name)>::row(#name, __VA_ARGS__)

}  // namespace boardctl::calls
