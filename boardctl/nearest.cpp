#include "boardctl/nearest.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace boardctl {
namespace {

// Letters to insert, remove or replace, and neighbours to exchange.
size_t distance(std::string_view a, std::string_view b) {
    std::vector<size_t> before(b.size() + 1);
    std::vector<size_t> row(b.size() + 1);
    std::vector<size_t> next(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        next[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t replaced = row[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            next[j] = std::min({replaced, row[j] + 1, next[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                next[j] = std::min(next[j], before[j - 2] + 1);
        }
        before = std::exchange(row, next);
    }
    return row[b.size()];
}

}  // namespace

std::string suggestion(std::string_view word, const std::vector<std::string>& known) {
    const std::string* nearest = nullptr;
    size_t least = word.size() / 3 + 2;
    for (const std::string& each : known) {
        const size_t steps = distance(word, each);
        if (steps >= least) continue;
        nearest = &each;
        least = steps;
    }
    return nearest == nullptr ? "" : "; did you mean '" + *nearest + "'?";
}

std::string alternatives(const std::vector<std::string>& words) {
    std::string text;
    for (size_t i = 0; i < words.size(); ++i)
        text += (i == 0 ? "" : i + 1 == words.size() ? " or " : ", ") + words[i];
    return text;
}

}  // namespace boardctl
