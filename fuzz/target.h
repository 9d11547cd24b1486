// What every target stands on: the library on a board in memory, the pieces of an input, outputs
// that show who wrote to them.
//
// A target defines fuzz(Pieces&). Its inputs are readable: pieces parted by lines of "%%".
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "board/host/state.h"
#include "tests/support/outside.h"

#define CLAIM(condition) ((condition) ? void() : fuzz_target::broken(#condition, __LINE__))

namespace fuzz_target {

[[noreturn]] void broken(const char* claim, int line);

class Pieces {
public:
    explicit Pieces(std::string_view input) : rest_(input) {}

    std::string_view next();  // up to a line of "%%", or all that is left
    std::string text() {      // the same up to its first NUL
        const std::string_view piece = next();
        return std::string(piece.substr(0, piece.find('\0')));
    }
    std::string_view rest() const { return rest_; }

private:
    std::string_view rest_;
};

// A record on the heap, where a sanitizer sees its borders, full of a pattern.
template <class Record>
class Output {
public:
    Output() { std::memset(get(), kPattern, sizeof(Record)); }
    Record* get() { return &place_->record; }
    Record* operator->() { return get(); }

    bool untouched(size_t from = 0, size_t to = sizeof(Record)) const {
        const auto* const bytes = reinterpret_cast<const unsigned char*>(&place_->record);
        if (from == to) return true;
        return bytes[from] == kPattern &&
               std::memcmp(bytes + from, bytes + from + 1, to - from - 1) == 0;
    }

private:
    static constexpr unsigned char kPattern = 0xA5;
    struct Place {
        Record record;  // an array, too
    };
    std::unique_ptr<Place> place_{new Place};
};

// A text of its own size on the heap.
class Exact {
public:
    explicit Exact(std::string_view text) : bytes_(new char[text.size() + 1]) {
        std::memcpy(bytes_.get(), text.data(), text.size());
        bytes_[text.size()] = '\0';
    }
    char* c_str() { return bytes_.get(); }

private:
    std::unique_ptr<char[]> bytes_;
};

template <size_t kSize>
bool is_terminated(const char (&field)[kSize]) {
    return std::memchr(field, '\0', kSize) != nullptr;
}

// Copies what there is into the record, again and again up to its end.
template <class Record>
void fill(Record& record, std::string_view bytes) {
    if (bytes.empty()) return;
    auto* const out = reinterpret_cast<char*>(&record);
    for (size_t i = 0; i < sizeof record; ++i) out[i] = bytes[i % bytes.size()];
}

inline constexpr const char* kIndex =
    "INDEX0_main_ifname=ra0\nINDEX0_ext_ifname=ra\nINDEX0_apcli_ifname=apcli\n"
    "INDEX0_profile_path=/etc/wireless/radio0.dat\nINDEX0_EEPROM_offset=0x0\n"
    "INDEX1_main_ifname=rai0\nINDEX1_ext_ifname=rai\nINDEX1_apcli_ifname=apclii\n"
    "INDEX1_profile_path=/etc/wireless/radio1.dat\nINDEX1_EEPROM_offset=0x8000\n";

harness::Outside& outside();

}  // namespace fuzz_target

void fuzz(fuzz_target::Pieces& input);
