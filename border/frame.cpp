#include "border/frame.h"

#include <algorithm>
#include <cstring>

#include "border/words.h"

namespace border {
namespace {

constexpr size_t kGuardSize = 64;
constexpr unsigned char kGuard = 0xa5;
constexpr size_t kLargestBuffer = size_t{64} << 20;
constexpr size_t kZerosBehindRawText = 16;

bool is_number(Kind kind) {
    return kind <= Kind::length;
}

// "ssid=name,channel=6" over a record of zeros.
std::string assigned_record(const Record& record, size_t size, std::string_view assignments) {
    std::string content(size, '\0');
    auto* const bytes = reinterpret_cast<unsigned char*>(content.data());
    while (!assignments.empty()) {
        const std::string_view one = assignments.substr(0, assignments.find(','));
        const size_t equals = one.find('=');
        if (equals == one.npos) throw BadArgument("", " is not FIELD=VALUE", one);
        set_field(record, bytes, one.substr(0, equals), one.substr(equals + 1));
        assignments.remove_prefix(std::min(one.size() + 1, assignments.size()));
    }
    return content;
}

}  // namespace

void Frame::Slot::hold(std::string_view content, size_t room, char fill) {
    size = room;
    buffer.assign(room + kGuardSize, kGuard);
    std::fill_n(buffer.begin(), room, static_cast<unsigned char>(fill));
    std::copy(content.begin(), content.end(), buffer.begin());
}

std::string_view Frame::Slot::content() const {
    return {reinterpret_cast<const char*>(buffer.data()), size};
}

Frame::Frame(const Function& function, const std::vector<std::string>& arguments,
             const ReadFile& read_file, char fill)
    : function_(function), read_file_(read_file) {
    std::vector<std::string> given;
    for (const std::string& argument : arguments)
        if (!take_option(argument)) given.push_back(argument);

    const auto begin = function.parameters.begin();
    const auto end = begin + static_cast<std::ptrdiff_t>(function.count);
    const auto wanted = static_cast<size_t>(std::count_if(begin, end, takes_argument));
    if (given.size() != wanted)
        throw BadArgument(std::string(function.name) + " takes " + std::to_string(wanted) +
                          " arguments, not " + std::to_string(given.size()));

    size_t next = 0;
    for (size_t i = 0; i < function.count; ++i)
        if (takes_argument(function.parameters[i])) take(i, given[next++]);
    for (size_t i = 0; i < function.count; ++i)
        if (!takes_argument(function.parameters[i])) make_room(i, fill);
    check_parts();
}

// NAME=- : the function gets no such buffer. NAME=@FILE : the file takes what it fills.
bool Frame::take_option(std::string_view argument) {
    for (size_t i = 0; i < function_.count; ++i) {
        const Parameter& parameter = function_.parameters[i];
        const std::string start = std::string(parameter.name) + '=';
        if (!is_answer(parameter) || !argument.starts_with(start)) continue;
        const std::string_view target = argument.substr(start.size());
        if (target == "-" && !takes_argument(parameter))
            slots_[i].null = true;
        else if (target.size() > 1 && target[0] == '@' && parameter.kind != Kind::filled_list)
            slots_[i].file = target.substr(1);
        else
            continue;
        return true;
    }
    return false;
}

void Frame::take(size_t place, const std::string& argument) {
    const Parameter& parameter = function_.parameters[place];
    Slot& slot = slots_[place];
    if (is_number(parameter.kind)) {
        slot.number = read_number(argument, parameter.range, parameter.name);
        return;
    }
    if (argument == "-") {
        slot.null = true;
        return;
    }
    const std::string content = given_bytes(parameter, argument);
    size_t room = content.size();
    if (parameter.kind == Kind::text || parameter.kind == Kind::changed_text) {
        if (content.find('\0') != content.npos)
            throw BadArgument(std::string(parameter.name) + " holds a zero byte");
        ++room;
    }
    if (parameter.kind == Kind::raw_text) room += kZerosBehindRawText;
    slot.hold(content, room, '\0');
}

std::string Frame::given_bytes(const Parameter& parameter, const std::string& argument) const {
    switch (parameter.kind) {
        case Kind::mac:
            return read_mac(argument, parameter.name);
        case Kind::bytes:
            if (argument.starts_with('@')) return read_file_(argument.substr(1));
            return read_hex(argument, parameter.name);
        case Kind::record:
        case Kind::changed_record:
            return given_record(parameter, argument);
        default:
            return read_text(argument, parameter.name);
    }
}

std::string Frame::given_record(const Parameter& parameter, const std::string& argument) const {
    const size_t size = parameter.room * parameter.record->size;
    const bool from_file = argument.starts_with('@');
    if (!from_file && argument.find('=') != argument.npos)
        return assigned_record(*parameter.record, size, argument);
    std::string content =
        from_file ? read_file_(argument.substr(1)) : read_hex(argument, parameter.name);
    if (content.size() != size)
        throw BadArgument(std::string(parameter.name) + " is " + std::to_string(size) +
                          " bytes long, not " + std::to_string(content.size()));
    return content;
}

void Frame::make_room(size_t place, char fill) {
    const Parameter& parameter = function_.parameters[place];
    Slot& slot = slots_[place];
    switch (parameter.kind) {
        case Kind::filled_number:
            return slot.hold({}, sizeof(uint32_t), fill);
        case Kind::filled_list:
            return slot.hold({}, sizeof(wired_station_list), '\0');
        default:
            break;
    }
    const int64_t asked = parameter.room != 0 ? parameter.room : number_of(Kind::size);
    const auto room = static_cast<size_t>(std::max<int64_t>(asked, 0));
    if (room > kLargestBuffer / unit_size(parameter))
        throw BadArgument(std::string(parameter.name) + " would be larger than 64 MiB");
    slot.hold({}, room * unit_size(parameter), fill);
}

// The part of the given bytes that the function reads must lie in them.
void Frame::check_parts() const {
    const Slot* const given = find(Kind::bytes);
    if (given == nullptr || given->null) return;
    const int64_t offset = number_of(Kind::offset);
    const int64_t length = number_of(Kind::length);
    if (offset >= 0 && length >= 0 && offset + length > static_cast<int64_t>(given->size))
        throw BadArgument("the bytes end at " + std::to_string(given->size));
}

const Frame::Slot* Frame::find(Kind kind) const {
    for (size_t i = 0; i < function_.count; ++i)
        if (function_.parameters[i].kind == kind) return &slots_[i];
    return nullptr;
}

int64_t Frame::number_of(Kind kind) const {
    const Slot* const slot = find(kind);
    return slot != nullptr ? static_cast<int64_t>(slot->number) : 0;
}

Frame::Words Frame::words() {
    Words words = {};
    for (size_t i = 0; i < function_.count; ++i) {
        Slot& slot = slots_[i];
        if (is_number(function_.parameters[i].kind))
            words[i] = slot.number;
        else if (!slot.null)
            words[i] = reinterpret_cast<uintptr_t>(slot.buffer.data());
    }
    return words;
}

const char* Frame::overrun() const {
    for (size_t i = 0; i < function_.count; ++i) {
        const std::vector<unsigned char>& buffer = slots_[i].buffer;
        const auto guard = buffer.begin() + static_cast<std::ptrdiff_t>(slots_[i].size);
        if (std::any_of(guard, buffer.end(), [](unsigned char byte) { return byte != kGuard; }))
            return function_.parameters[i].name;
    }
    return nullptr;
}

std::string_view Frame::used(size_t place, uintptr_t result) const {
    const Parameter& parameter = function_.parameters[place];
    const std::string_view content = slots_[place].content();
    if (parameter.used == Used::result) {
        const size_t count = static_cast<size_t>(std::max(static_cast<int32_t>(result), 0));
        return content.substr(0, std::min(count * unit_size(parameter), content.size()));
    }
    const Slot* const length = find(Kind::filled_number);
    if (parameter.used == Used::filled_number && !length->null)
        return content.substr(0, number_at(length->content()));
    const bool text = parameter.kind == Kind::filled_text || parameter.kind == Kind::changed_text;
    return text ? content.substr(0, content.find('\0')) : content;
}

uint32_t number_at(std::string_view bytes) {
    uint32_t number = 0;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

}  // namespace border
