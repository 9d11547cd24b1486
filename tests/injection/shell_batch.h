// Many commands in one real shell, with functions in the place of the board's tools.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace injection {

// What the shell made of the commands: for each the words that its tools were given, in order and
// with their number ahead, and the files that were written.
struct Outcome {
    std::vector<std::vector<std::string>> words;
    std::map<std::string, std::string> files;  // "12/name"
};

class ShellBatch {
public:
    ShellBatch() {
        // In memory where there is a place for it.
        folder_ = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : testing::TempDir();
        folder_ += "/injectionXXXXXX";
        if (mkdtemp(folder_.data()) == nullptr) std::abort();
        std::ofstream(script()) << kTools;
    }
    ShellBatch(const ShellBatch&) = delete;
    ShellBatch& operator=(const ShellBatch&) = delete;
    ~ShellBatch() { std::filesystem::remove_all(folder_); }

    // The files of board_folder, if the command names any, go to a folder of the command's own.
    void add(std::string command, const std::string& board_folder) {
        if (!board_folder.empty()) {
            const std::string own = folder_ + '/' + std::to_string(count_) + '/';
            mkdir(own.c_str(), 0755);
            if (const size_t at = command.find(board_folder); at != command.npos)
                command.replace(at, board_folder.size(), own);
        }
        text_ += "next " + std::to_string(count_++) + '\n' + command + '\n';
    }

    Outcome run() {
        std::ofstream(script(), std::ios::app) << text_;
        const std::string start = "cd " + folder_ + " && PATH=/nonexistent exec /bin/dash script " +
                                  "3>words >output 2>&1 </dev/null";
        EXPECT_EQ(0, std::system(start.c_str())) << read("output").substr(0, 2000);
        return {split(read("words")), files()};
    }

private:
    static constexpr const char* kTools = R"(
next() { printf '#next\0%s\0' "$1" >&3; }
tool() { printf '%s\0' "$#" "$@" >&3; echo answer; }
filter() { read -r input; printf '%s\0' "$#" "$@" "$input" >&3; }
alias /sbin/iwpriv='tool iwpriv' iwpriv='tool iwpriv' /sbin/brctl='tool brctl'
alias /sbin/iptables='tool iptables' ebtables='tool ebtables' killall='tool killall'
alias /usr/bin/killall='tool killall' ifconfig='tool ifconfig' insmod='tool insmod' ls='tool ls'
alias switch='tool switch' /sbin/uboot_env='tool uboot_env' /sbin/mtd='filter mtd'
alias /sbin/restorebackup='tool restorebackup' ated='tool ated' led_ctl='tool led_ctl'
alias /bin/bndstrg='tool bndstrg' rt2860apd='tool rt2860apd' rtinicapd='tool rtinicapd'
)";

    std::string script() const { return folder_ + "/script"; }

    std::string read(const std::string& name) const {
        std::ifstream file(folder_ + '/' + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::vector<std::vector<std::string>> split(const std::string& text) {
        std::vector<std::vector<std::string>> commands;
        for (size_t at = 0; at < text.size();) {
            std::string word = text.substr(at, text.find('\0', at) - at);
            at += word.size() + 1;
            if (word == "#next") {
                commands.emplace_back();
            } else if (!commands.empty()) {
                commands.back().push_back(std::move(word));
            }
        }
        return commands;
    }

    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
            const std::string name = entry.path().string().substr(folder_.size() + 1);
            if (entry.is_regular_file() && name != "script" && name != "words" && name != "output")
                found[name] = read(name);
        }
        return found;
    }

    std::string folder_;
    std::string text_;
    int count_ = 0;
};

}  // namespace injection
