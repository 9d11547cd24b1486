// iptables and ebtables: ordered rules, one "TABLE CHAIN RULE" a line.
#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "board/store/store.h"
#include "board/tools/tools.h"

namespace board::tools {
namespace {

struct Firewall {
    const char* file;
    const char* no_rule;
    int no_rule_status;
};

constexpr Firewall kIptables = {
    "iptables", "iptables: Bad rule (does a matching rule exist in that chain?).", 1};
constexpr Firewall kEbtables = {"ebtables", "Sorry, rule does not exist.", 255};

struct Request {
    char action = '\0';  // A append, I insert at the head, D delete the first match
    std::string table = "filter";
    std::string chain;
    std::string rule;
};

bool takes_value(std::string_view option) {
    constexpr std::string_view kOptions[] = {"-i", "-o", "-s", "-d", "-p", "-j"};
    return std::find(std::begin(kOptions), std::end(kOptions), option) != std::end(kOptions);
}

bool is_action(std::string_view option) {
    return option == "-A" || option == "-I" || option == "-D";
}

// Options and their values in any order. Nothing when a word is neither, as in "-o -j MASQUERADE",
// where the interface name is missing.
std::optional<Request> parse(Words words) {
    Request request;
    while (words.size() >= 2) {
        const std::string& option = words[0];
        const bool negated = words[1] == "!" && words.size() >= 3;
        const std::string value = negated ? "! " + words[2] : words[1];
        if (is_action(option)) {
            request.action = option[1];
            request.chain = value;
        } else if (option == "-t") {
            request.table = value;
        } else if (takes_value(option)) {
            request.rule.append(" ").append(option).append(" ").append(value);
        } else {
            return std::nullopt;
        }
        words = words.subspan(negated ? 3 : 2);
    }
    if (request.action == '\0' || !words.empty()) return std::nullopt;
    return request;
}

int change(const Firewall& firewall, Words words) {
    const auto request = parse(words);
    if (!request) return fail(2, std::string(firewall.file) + ": bad argument");

    const std::string path = live_path(firewall.file);
    std::vector<std::string> rules = read_lines(path);
    const std::string rule = request->table + ' ' + request->chain + request->rule;
    if (request->action == 'A') {
        rules.push_back(rule);
    } else if (request->action == 'I') {
        rules.insert(rules.begin(), rule);
    } else {
        const auto match = std::find(rules.begin(), rules.end(), rule);
        if (match == rules.end()) return fail(firewall.no_rule_status, firewall.no_rule);
        rules.erase(match);
    }
    return replace_lines(path, rules) ? 0 : 1;
}

}  // namespace

int iptables(Words words) {
    return change(kIptables, words);
}

int ebtables(Words words) {
    return change(kEbtables, words);
}

}  // namespace board::tools
