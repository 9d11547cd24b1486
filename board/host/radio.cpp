#include "board/host/radio.h"

#include <charconv>
#include <optional>

namespace board {
namespace {

// "rai2" with the prefix "rai" is 2.
std::optional<int> number_after(std::string_view prefix, std::string_view ifname) {
    if (prefix.empty() || !ifname.starts_with(prefix)) return std::nullopt;
    ifname.remove_prefix(prefix.size());
    int number = 0;
    const char* const end = ifname.data() + ifname.size();
    const auto [stop, error] = std::from_chars(ifname.data(), end, number);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

bool owns(const Radio& radio, std::string_view ifname) {
    return (!ifname.empty() && ifname == radio.main_ifname) || is_client(radio, ifname) ||
           number_after(radio.bss_prefix, ifname);
}

}  // namespace

int wl_mode_of(std::string_view ifname) {
    for (const int32_t wl_mode : state().wl_modes)
        if (const Radio* radio = find_radio(wl_mode); radio && owns(*radio, ifname)) return wl_mode;
    return kUnknownRadio;
}

Radio* find_radio(int wl_mode) {
    auto& radios = state().radios;
    const auto index = static_cast<size_t>(wl_mode);
    return wl_mode >= 0 && index < radios.size() ? &radios[index] : nullptr;
}

Radio* find_radio(std::string_view ifname) {
    return find_radio(wl_mode_of(ifname));
}

int bss_number(const Radio& radio, std::string_view ifname) {
    if (ifname == radio.main_ifname) return 0;
    const int number = number_after(radio.bss_prefix, ifname).value_or(0);
    return number >= 0 && number < PLATFORM_BSS_MAX ? number : 0;
}

bool is_client(const Radio& radio, std::string_view ifname) {
    return number_after(radio.client_prefix, ifname).has_value();
}

}  // namespace board
