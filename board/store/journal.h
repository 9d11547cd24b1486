// The journal: one line for every effect on the board, in order, whoever caused it.
//
// A line is the call or command as it reads, words separated by one blank: "ifup ra0",
// "brctl addif br0 ra0". A word with anything but plain characters is quoted as in C, with \xHH
// for what does not print: iwpriv ra0 set "SSID=my \"net\"".
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace board {

void journal(const std::vector<std::string>& words);
void journal(std::initializer_list<std::string_view> words);

std::vector<std::string> journal_lines();
void clear_journal();

std::string quote(std::string_view word);

}  // namespace board
