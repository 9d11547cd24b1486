// No text from outside leaves its word: every command of the library with hostile texts in a real
// shell, beside the same command with harmless ones.
//
// A harmless twin has the length of its text and consists of one letter that no command holds
// otherwise. Wherever the shell hands a tool, or names a file by, n of these letters, it must do
// the same with the first n bytes of the hostile text.
#include <iostream>
#include <random>
#include <set>

#include "injection/callers.h"
#include "injection/command_forms.h"
#include "injection/shell_batch.h"

namespace {

using injection::Caller;
using injection::Texts;

constexpr int kRounds = 1000;
constexpr std::string_view kTwinLetters = "JKXYZH";

constexpr const char* kFragments[] = {
    "'", "\"", "\\", "`",  "$",     "$(x)", "${HOME}", "`x`", ";",     "&",    "&&", "|",  ">",
    "<", ">&", "(",  ")",  "{a,b}", "*",    "?",       "[a]", "~",     "#",    "!",  "\n", "\t",
    " ", "\r", "-",  "--", "=",     "%s",   "$'\\n'",  "\\'", "'\\''", "\xFF", "a",  "0",  "/.",
};

std::string hostile_text(std::mt19937& random, const Caller& caller) {
    const std::string_view without = caller.without;
    const size_t length = 1 + random() % caller.longest;
    std::string text;
    while (text.size() < length) {
        std::string more = kFragments[random() % std::size(kFragments)];
        if (random() % 4 == 0) more = static_cast<char>(1 + random() % 255);
        if (more.find_first_of(without) == more.npos) text += more;
    }
    text.resize(length);
    return text;
}

Texts hostile_texts(std::mt19937& random, const Caller& caller) {
    Texts texts(caller.texts);
    for (std::string& text : texts) text = hostile_text(random, caller);
    return texts;
}

Texts twins_of(const Texts& texts) {
    Texts twins;
    for (const std::string& text : texts)
        twins.emplace_back(text.size(), kTwinLetters[twins.size()]);
    return twins;
}

std::string with_texts(const std::string& twin, const Texts& texts) {
    std::string word;
    for (size_t i = 0; i < twin.size();) {
        const size_t letter = kTwinLetters.find(twin[i]);
        if (letter >= texts.size()) {
            word += twin[i++];
            continue;
        }
        const size_t end = std::min(twin.find_first_not_of(twin[i], i), twin.size());
        word += texts[letter].substr(0, end - i);
        i = end;
    }
    return word;
}

// Where the command's output goes, if to a file.
std::string folder_of(const std::string& twin) {
    const size_t at = twin.find(" > /");
    return at == twin.npos ? "" : twin.substr(at + 3, twin.rfind('/') - at - 2);
}

// The library on a host that knows every interface as the first radio's.
class Library {
public:
    std::vector<std::string> commands_of(const Caller& caller, const Texts& texts, int round) {
        board::state() = board::factory_state();
        for (board::Radio& radio : board::state().radios) radio.chipset = "mt7615";
        for (wireless_conf& conf : board::state().radios[0].bss) conf.enabled = 1;
        board::state().mac_filters[2] = {1, {board::filter_entry("00:11:22:33:44:55")}};
        board_.index.clear();
        board_.file_is_there = true;
        board_.commands.clear();
        caller.run({board_, texts, round});
        return board_.commands;
    }

private:
    static int radio_of(const char*) { return 0; }
    static int uses_8021x(const char*, const wireless_conf*, int) { return 1; }
    static int read_record(wireless_conf* record, const char*) {
        *record = board::state().radios[0].bss[0];
        return 0;
    }
    static int read_records(const char*, wireless_conf* records, int) {
        std::ranges::copy(board::state().radios[0].bss, records);
        return PLATFORM_BSS_MAX;
    }

    harness::MemoryBoard board_;
    const harness::LibraryHook hooks_[4] = {
        {"get_wl_mode_by_ifname",                radio_of    },
        {"wireless_check_8021x_enable_for_band", uses_8021x  },
        {"read_wireless_conf",                   read_record },
        {"read_all_mbss_conf",                   read_records},
    };
};

class Injection : public testing::Test {
protected:
    void add(const Caller& caller, int round) {
        const Texts texts = hostile_texts(random_, caller);
        const auto twin = library_.commands_of(caller, twins_of(texts), round);
        const auto hostile = library_.commands_of(caller, texts, round);
        ASSERT_EQ(twin.size(), hostile.size()) << caller.name << ", round " << round;
        for (size_t i = 0; i < twin.size(); ++i) {
            twins_.add(twin[i], folder_of(twin[i]));
            hostile_.add(hostile[i], folder_of(twin[i]));
            differ_ += twin[i] != hostile[i];
            texts_.push_back(texts);
            commands_.push_back(hostile[i]);
            seen_.insert(twin[i]);
        }
    }

    void compare(const injection::Outcome& twin, const injection::Outcome& hostile) const {
        ASSERT_EQ(commands_.size(), twin.words.size());
        ASSERT_EQ(commands_.size(), hostile.words.size());
        for (size_t i = 0; i < commands_.size(); ++i) {
            std::vector<std::string> expected;
            for (const std::string& word : twin.words[i])
                expected.push_back(with_texts(word, texts_[i]));
            ASSERT_LE(commands_[i].starts_with("echo") ? 1U : 2U, expected.size()) << commands_[i];
            ASSERT_EQ(expected, hostile.words[i]) << commands_[i];
        }
        std::map<std::string, std::string> expected;
        for (const auto& [name, content] : twin.files)
            expected[with_texts(name, texts_[std::stoul(name)])] = content;
        EXPECT_EQ(expected, hostile.files);
    }

    // The forms that no command was of. Of two that a command fits, the one with more text of its
    // own made it.
    Texts not_run(Texts forms) const {
        std::set<std::string> left(forms.begin(), forms.end());
        std::ranges::sort(forms, std::greater(), injection::own_text);
        std::vector<std::regex> patterns;
        std::ranges::transform(forms, std::back_inserter(patterns), injection::pattern_of);
        for (const std::string& command : seen_)
            for (size_t i = 0; i < forms.size(); ++i)
                if (std::regex_match(command, patterns[i])) {
                    left.erase(forms[i]);
                    break;
                }
        return {left.begin(), left.end()};
    }

    std::mt19937 random_{7622};
    Library library_;
    injection::ShellBatch twins_;
    injection::ShellBatch hostile_;
    std::vector<Texts> texts_;
    std::vector<std::string> commands_;
    std::set<std::string> seen_;
    size_t differ_ = 0;
};

TEST_F(Injection, TextsStayInTheirWords) {
    for (int round = 0; round < kRounds; ++round)
        for (const Caller& caller : injection::kCallers)
            if (round % caller.every < 6) add(caller, round);
    ASSERT_FALSE(HasFatalFailure());
    compare(twins_.run(), hostile_.run());
    std::cout << commands_.size() << " commands, " << differ_ << " with hostile texts\n";
    EXPECT_LE(100'000U, differ_);
    EXPECT_EQ(Texts{}, not_run(injection::forms_in_sources(SOURCES)));
}

TEST(CommandForms, AreThoseOfTheDocument) {
    Texts documented;
    for (const auto& [form, arguments] : injection::forms_in_document(DOCUMENT)) {
        EXPECT_EQ(injection::argument_count(form), arguments) << form;
        documented.push_back(form);
    }
    EXPECT_EQ(injection::forms_in_sources(SOURCES), documented);
}

TEST(CommandForms, HoldNoLetterOfATwin) {
    for (const std::string& form : injection::forms_in_sources(SOURCES))
        EXPECT_EQ(form.npos, form.find_first_of(kTwinLetters)) << form;
}

}  // namespace
