#include "boardctl/verb.h"

#include <algorithm>
#include <charconv>

#include "boardctl/nearest.h"

namespace boardctl {

std::string Arguments::text(const std::string& name, const std::string& fallback) const {
    const auto values = values_.find(name);
    return values == values_.end() ? fallback : values->second.back();
}

std::vector<std::string> Arguments::texts(const std::string& name) const {
    const auto values = values_.find(name);
    return values == values_.end() ? std::vector<std::string>{} : values->second;
}

bool Arguments::has_any(std::initializer_list<const char*> names) const {
    return std::any_of(names.begin(), names.end(), [&](const char* name) { return has(name); });
}

int Arguments::number(const std::string& name, int fallback, Range range) const {
    return has(name) ? number_of(text(name), name, range) : fallback;
}

int number_of(const std::string& text, const std::string& name, Range range) {
    const bool is_hexadecimal = text.starts_with("0x");
    const char* const start = text.data() + (is_hexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    int value = 0;
    const auto [stop, error] = std::from_chars(start, end, value, is_hexadecimal ? 16 : 10);
    if (error != std::errc{} || stop != end || value < range.first || value > range.last)
        throw UsageError(name + " is a number from " + std::to_string(range.first) + " to " +
                         std::to_string(range.last) + ", not " + text);
    return value;
}

void require_one_of(const std::vector<std::string>& words, const std::string& value,
                    const std::string& name) {
    if (std::find(words.begin(), words.end(), value) == words.end())
        throw UsageError(name + " is " + alternatives(words) + ", not " + value);
}

bool is_on(const std::string& text) {
    return text == "on" || text == "yes" || text == "1";
}

Verb::Verb(const std::string& words, const char* its_help, const char* its_examples,
           Outcome (*its_run)(Session&, const Arguments&), std::vector<Option> its_options)
    : group(words.substr(0, words.find(' '))),
      name(words, std::min(group.size() + 1, words.size())),
      help(its_help),
      examples(its_examples),
      run(its_run),
      options(std::move(its_options)),
      is_default(words.ends_with('*')) {
    if (is_default) name.pop_back();
}

}  // namespace boardctl
