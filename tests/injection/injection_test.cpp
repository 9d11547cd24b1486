// No text from outside leaves its word: every command of the library with hostile texts in a real
// shell, beside the same command with harmless ones.
//
// A harmless twin has the length of its text and consists of one letter that no command holds
// otherwise. Wherever the shell hands a tool, or names a file by, n of these letters, it must do
// the same with the first n bytes of the hostile text.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <random>
#include <regex>
#include <set>

#include "tests/injection/callers.h"

namespace {

using injection::Caller;
using Texts = std::vector<std::string>;

constexpr std::string_view kTwinLetters = "JKXYZH";

constexpr const char* kFragments[] = {
    "'", "\"", "\\", "`",  "$",     "$(x)", "${HOME}", "`x`", ";",     "&",    "&&", "|",  ">",
    "<", ">&", "(",  ")",  "{a,b}", "*",    "?",       "[a]", "~",     "#",    "!",  "\n", "\t",
    " ", "\r", "-",  "--", "=",     "%s",   "$'\\n'",  "\\'", "'\\''", "\xFF", "a",  "0",  "/.",
};

std::string hostile_text(std::mt19937& random, const Caller& caller) {
    const size_t length = 1 + random() % caller.longest;
    std::string text;
    while (text.size() < length) {
        std::string more = kFragments[random() % std::size(kFragments)];
        if (random() % 4 == 0) more = static_cast<char>(1 + random() % 255);
        if (text.empty() && more[0] == caller.not_first) continue;
        if (more.find_first_of(caller.without) == more.npos) text += more;
    }
    return text.substr(0, length);
}

std::string with_texts(const std::string& twin, const Texts& texts) {
    std::string word;
    for (size_t i = 0, start = 0; i < twin.size(); ++i) {
        if (twin[i] != twin[start]) start = i;
        const size_t letter = kTwinLetters.find(twin[i]);
        word += letter < texts.size() ? texts[letter].at(i - start) : twin[i];
    }
    return word;
}

std::string replaced(const std::string& text, const char* pattern, const char* by) {
    return std::regex_replace(text, std::regex(pattern), by);
}

std::string content_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

constexpr const char* kTools = R"(
next() { printf '#next\0' >&3; }
tool() { printf '%s\0' "$#" "$@" >&3; echo answer; }
filter() { read -r input; printf '%s\0' "$#" "$@" "$input" >&3; }
for name in ated ebtables ifconfig insmod iwpriv killall led_ctl ls rt2860apd rtinicapd switch \
    /bin/bndstrg /sbin/brctl /sbin/iptables /sbin/iwpriv /sbin/restorebackup /sbin/uboot_env \
    /usr/bin/killall; do alias "$name=tool $name"; done
alias /sbin/mtd='filter mtd'
)";

// What the shell made of each command: the words that its tools were given, in order and with their
// number ahead, then name and content of the file of its number.
std::vector<Texts> run_in_shell(const Texts& commands) {
    namespace fs = std::filesystem;
    // In memory where there is a place for it.
    std::string home = access("/dev/shm", W_OK) == 0 ? "/dev/shm/" : testing::TempDir();
    home = mkdtemp((home + "injectionXXXXXX").data());
    const fs::path board = home + "/board";
    fs::create_directory(board);
    std::string script = kTools;
    for (const std::string& command : commands) script += "next\n" + command + '\n';
    std::ofstream(home + "/script") << script;
    const std::string start = "cd " + board.string() + " && PATH=/nonexistent exec /bin/dash " +
                              "../script 3>../words >../output 2>&1 </dev/null";
    EXPECT_EQ(0, std::system(start.c_str())) << content_of(home + "/output").substr(0, 2000);

    std::vector<Texts> outcome;
    std::ifstream words(home + "/words");
    for (std::string word; std::getline(words, word, '\0');)
        word == "#next" ? void(outcome.emplace_back()) : outcome.back().push_back(word);
    outcome.resize(commands.size());
    for (const auto& file : fs::directory_iterator(board)) {
        const std::string name = file.path().filename();
        const size_t number = std::strtoul(name.c_str(), nullptr, 10);
        EXPECT_TRUE(name.starts_with(std::to_string(number) + '.')) << "a stray file: " << name;
        for (const std::string& text : {replaced(name, "^\\d+", ""), content_of(file)})
            outcome.at(number).push_back(text);
    }
    fs::remove_all(home);
    return outcome;
}

// The command with its output, if it goes to a file, in one of its own number.
std::string redirected(std::string command, const std::string& twin, size_t number) {
    const size_t start = twin.find(" > /");
    if (start == twin.npos) return command;
    const std::string folder = twin.substr(start + 3, twin.rfind('/') - start - 2);
    if (const size_t at = command.find(folder); at != command.npos)
        command.replace(at, folder.size(), std::to_string(number) + '.');
    return command;
}

// Of the library on a host that knows the interface of the first text as a radio's.
Texts commands_of(const Caller& caller, const Texts& texts, int round) {
    static auto* const outside = new harness::Outside;
    outside->restart();
    board::state() = board::factory_state();
    for (board::Radio& radio : board::state().radios) radio.chipset = "mt7615";
    board::Radio& first = board::state().radios[0];
    if (!texts.empty()) first.main_ifname = texts[0];
    first.bss_count = PLATFORM_BSS_MAX;
    for (wireless_conf& conf : first.bss) conf.enabled = 1;
    board::state().mac_filters[2] = {1, {board::filter_entry("00:11:22:33:44:55")}};
    for (const char* path : {injection::kFactoryMode, injection::kSnooping})
        outside->write(path, "1");
    caller.run({*outside, texts, round});
    outside->expect_all_given_back();
    return outside->commands;
}

struct Sample {
    Texts commands;            // each twin before the same with hostile texts
    std::vector<Texts> texts;  // of each pair
    std::set<std::string> twins;
};

void add(Sample& sample, const Caller& caller, int round) {
    static std::mt19937 random(7622);
    Texts texts, harmless;
    for (size_t i = 0; i < caller.texts; ++i) {
        texts.push_back(hostile_text(random, caller));
        harmless.emplace_back(texts[i].size(), kTwinLetters[i]);
    }
    const Texts twins = commands_of(caller, harmless, round);
    const Texts hostile = commands_of(caller, texts, round);
    ASSERT_EQ(twins.size(), hostile.size()) << caller.name << ", round " << round;
    for (size_t i = 0; i < twins.size(); ++i) {
        for (const std::string& command : {twins[i], hostile[i]})
            sample.commands.push_back(redirected(command, twins[i], sample.commands.size()));
        sample.texts.push_back(texts);
        sample.twins.insert(twins[i]);
    }
}

Texts matches(const std::string& text, const std::string& pattern, int group = 0) {
    const std::regex regex(pattern);
    return {std::sregex_token_iterator(text.begin(), text.end(), regex, group), {}};
}

std::set<std::string> forms_in_sources() {
    const std::string literal = R"re("((?:[^"\\]|\\.)*)")re";
    const std::string command = "Command<[^>]*>(?: \\w+)?\\(\\s*(?:" + literal + "|row\\.command,)";
    std::set<std::string> forms;
    for (const auto& file : std::filesystem::recursive_directory_iterator(SOURCES)) {
        if (!file.is_regular_file() || file.path().parent_path().filename() == "support") continue;
        const std::string text = content_of(file);
        Texts found = matches(text, command, 1);
        EXPECT_EQ(matches(text, "Command<").size(), found.size()) << "an unknown kind in " << file;
        if (std::erase(found, "") != 0) found = matches(text, "\\{\"[^\"]*\",\\s*" + literal, 1);
        EXPECT_EQ(found.empty(), text.find("Command<") == text.npos) << "no table in " << file;
        for (const std::string& form : found) forms.insert(replaced(form, R"(\\")", "\""));
    }
    return forms;
}

// The forms that no command is of. Where a command fits two and one of them has a directive for
// the other's text, the other made it: it is the later one in the order of texts.
std::set<std::string> not_run(std::set<std::string> forms, const std::set<std::string>& commands) {
    std::map<std::string, std::regex, std::greater<>> patterns;
    for (const std::string& form : forms) {
        std::string pattern = replaced(form, R"([.|*+?()\[\]{}^$\\])", "\\$&");
        pattern = replaced(replaced(pattern, "%s", "\\S*"), "%d", "-?\\d+");
        patterns.emplace(form, replaced(pattern, "%02x", "[0-9a-f]{2}"));
    }
    for (const std::string& command : commands) {
        const auto form = std::ranges::find_if(
            patterns, [&](const auto& row) { return std::regex_match(command, row.second); });
        if (form != patterns.end()) forms.erase(form->first);
    }
    return forms;
}

TEST(Injection, TextsStayInTheirWords) {
    Sample sample;
    for (int round = 0; round < 1000; ++round)
        for (const Caller& caller : injection::kCallers)
            ASSERT_NO_FATAL_FAILURE(add(sample, caller, round));
    const std::vector<Texts> words = run_in_shell(sample.commands);
    size_t differ = 0;
    for (size_t i = 0; i < words.size(); i += 2) {
        Texts expected;
        for (const std::string& word : words[i])
            expected.push_back(with_texts(word, sample.texts[i / 2]));
        ASSERT_FALSE(expected.empty()) << sample.commands[i];
        ASSERT_EQ(expected, words[i + 1]) << sample.commands[i + 1];
        differ += expected != words[i];
    }
    std::cout << sample.texts.size() << " commands, " << differ << " with hostile texts\n";
    EXPECT_LE(100'000U, differ);
    EXPECT_EQ(std::set<std::string>{}, not_run(forms_in_sources(), sample.twins));
}

// Its rows are "| `form` | what; why<br>what; why |". No form holds a letter of a twin.
TEST(CommandForms, AreThoseOfTheDocument) {
    std::set<std::string> documented;
    for (const std::string& row : matches(content_of(DOCUMENT), "\n\\| `.*")) {
        const size_t end = row.find("` | ");
        const std::string form = replaced(row.substr(4, end - 4), R"(\\\|)", "|");
        EXPECT_EQ(matches(form, "%").size(), matches(row.substr(end), "; ").size()) << form;
        EXPECT_EQ(form.npos, form.find_first_of(kTwinLetters)) << form;
        EXPECT_TRUE(documented.insert(form).second) << form;
    }
    EXPECT_EQ(forms_in_sources(), documented);
}

}  // namespace
