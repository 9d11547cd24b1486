// The answer of a verb, for people and for programs. Texts are escaped here, once for both.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace boardctl {

// Every text and key of the answer as shown() gives it.
nlohmann::ordered_json escaped(const nlohmann::ordered_json& value);

// Of an escaped answer. People get fields as lines and lists as tables, under headings.
std::string as_json(const nlohmann::ordered_json& value);
std::string as_text(const nlohmann::ordered_json& value, bool bold);

// To standard output. Throws Failed when not all of it could be written.
void print_out(const std::string& text);

}  // namespace boardctl
