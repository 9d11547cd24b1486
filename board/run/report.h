// What a person sees of a run: plain text in sections, columns aligned.
#pragma once

#include <string>
#include <vector>

#include "live/key_file.h"

namespace board::run {

void heading(const std::string& title);
void section(const std::string& title, const std::vector<std::string>& lines);

// Columns as wide as their widest cell; the first row is the head.
void table(const std::vector<std::vector<std::string>>& rows);

std::vector<std::string> split_lines(const std::string& text);

// "added KEY = value", "changed KEY = old -> new", "removed KEY", in the order of the new file.
std::vector<std::string> difference(const KeyFile& before, const KeyFile& after);

}  // namespace board::run
