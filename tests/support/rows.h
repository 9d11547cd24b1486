// A small table as text, where its rows would take a line each:
//
//   for (const auto& [mhz, channel] : rows<int, int>("2412 1  2484 15")) ...
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace harness {

template <class... Columns>
std::vector<std::tuple<Columns...>> rows(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::tuple<Columns...>> rows;
    const auto read = [&in](Columns&... columns) { return bool((in >> ... >> columns)); };
    for (std::tuple<Columns...> row; !(in >> std::ws).eof(); rows.push_back(row))
        if (!std::apply(read, row)) throw std::invalid_argument(text);
    return rows;
}

}  // namespace harness
