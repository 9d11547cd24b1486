// Escaped commands in the hands of a real shell: the tool must get exactly the bytes of the texts.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <sstream>

#include "board/store/store.h"
#include "src/support/command.h"
#include "tests/support/board.h"

namespace {

using harness::Lines;
using platform::CommandArgument;

constexpr std::string_view kPrinter = PRINT_ARGUMENTS;

class RealShell : public harness::Board, public testing::WithParamInterface<const char*> {
protected:
    RealShell() : Board(Files::in_tree) {}

    // The arguments that the tool gets. The shell has nothing else in reach: an empty directory
    // and no PATH.
    static Lines run(const std::string& command) {
        const int output = memfd_create("output", MFD_CLOEXEC);
        const pid_t shell = fork();
        if (shell == 0) {
            char path[] = "PATH=/nonexistent";
            char* const environment[] = {path, nullptr};
            const bool ready = dup2(output, STDOUT_FILENO) == STDOUT_FILENO &&
                               chdir((board::root() + "/tmp").c_str()) == 0;
            if (ready) execle(GetParam(), GetParam(), "-c", command.c_str(), nullptr, environment);
            _exit(127);
        }
        int status = -1;
        EXPECT_EQ(shell, waitpid(shell, &status, 0));
        EXPECT_EQ(0, status);
        std::string bytes(static_cast<size_t>(lseek(output, 0, SEEK_END)), '\0');
        EXPECT_EQ(std::ssize(bytes), pread(output, bytes.data(), bytes.size(), 0));
        close(output);
        Lines list;
        std::istringstream stream(bytes);
        for (std::string argument; std::getline(stream, argument, '\0');) list.push_back(argument);
        return list;
    }

    // Hands every text to the tool in each place where a command can hold one.
    static void expect_exact_arguments(const Lines& texts) {
        std::string format(kPrinter);
        std::vector<CommandArgument> arguments;
        Lines expected;
        for (const std::string& text : texts) {
            format += " %s \"%s\" -i%s \"K=%s;\"";
            arguments.insert(arguments.end(), 4, CommandArgument(std::string_view(text)));
            expected.insert(expected.end(), {text, text, "-i" + text, "K=" + text + ";"});
        }
        std::vector<char> room(100000);
        platform::Text command(room);
        ASSERT_TRUE(platform::form_command(command, format.c_str(), arguments));
        EXPECT_EQ(expected, run(command.c_str()));
    }
};

// Texts of 1 to longest bytes.
Lines random_texts(size_t count, size_t longest) {
    std::mt19937 random(7622);
    Lines texts(count);
    for (std::string& text : texts)
        for (size_t length = 1 + random() % longest; text.size() < length;)
            text += static_cast<char>(1 + random() % 255);
    return texts;
}

TEST_P(RealShell, LeavesBytesAndMixturesAsTheyAre) {
    Lines texts = random_texts(200, 40);
    for (int byte = 1; byte < 256; ++byte) texts.emplace_back(1, static_cast<char>(byte));
    expect_exact_arguments(texts);
    expect_exact_arguments({"a'b", "''", "\\'", "a\\", "\\\"", "$(echo x)", "`echo x`", "${HOME}",
                            "a\nb", "; echo x", "& echo x &", "> file", "~root", "$'\\n'",
                            "{a,b}"});
}

std::vector<const char*> installed_shells() {
    std::vector<const char*> shells = {"/bin/sh"};
    for (const char* shell : {"/bin/bash", "/bin/mksh", "/bin/zsh"})
        if (access(shell, X_OK) == 0) shells.push_back(shell);
    return shells;
}

INSTANTIATE_TEST_SUITE_P(, RealShell, testing::ValuesIn(installed_shells()),
                         [](const auto& row) { return std::string(row.param).substr(5); });

}  // namespace
