// The board of golden/sample.conf, with the profiles that an image shipped, and golden files.
#pragma once

#include <algorithm>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "board/host/state_file.h"
#include "board/store/key_file.h"
#include "platform/wireless.h"
#include "tests/support/board.h"

namespace harness {

// A text as long as the field fills it whole, without a terminator.
inline void put_text(std::span<char> field, std::string_view text) {
    std::ranges::fill(field, '\0');
    std::ranges::copy(text.substr(0, field.size()), field.begin());
}

// What an apply of the first radio reports, up to the power.
inline const std::string kWritten =
    "err WL_MODE: 0 Profile Name : /etc/wireless/radio0.dat\nerr Tx Power for Channel 3 -> ";

class SampleRadios : public Board {
protected:
    SampleRadios() {
        for (board::Radio& radio : host().radios) radio.bss = {};
        load("sample");
        ship_profiles();
        // No wireless WAN ran before.
        on_command = [](const std::string& command) {
            return command.find("iptables -t nat -D") != std::string::npos ? 1 : 0;
        };
    }

    static std::string golden(const std::string& name) {
        std::ifstream file(harness::test_file("golden/" + name));
        EXPECT_TRUE(file) << name;
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void load(const std::string& name) {
        EXPECT_EQ(Lines{},
                  board::load_state(host(), harness::test_file("golden/" + name + ".conf")));
    }
    void ship_profiles() {
        write(kProfilePath[0], golden("shipped_2g.dat"));
        write(kProfilePath[1], golden("shipped_5g.dat"));
    }

    static board::Radio& radio(int wl_mode) { return host().radios[static_cast<size_t>(wl_mode)]; }
    static wireless_conf& record(int wl_mode, size_t bss = 0) { return radio(wl_mode).bss[bss]; }

    // Applies the stored records, which writes the radio's profile; what it reports.
    std::string apply(int wl_mode) {
        clear_journal();
        EXPECT_EQ(0, platform_set_wireless(nullptr, radio(wl_mode).main_ifname.c_str()));
        return journal_text("err ");
    }

    // "KEY=VALUE" is in the profile; "KEY" alone: it has no such key.
    static void expect_keys(int wl_mode, const Lines& lines) {
        const auto profile = board::KeyFile::load_or_empty(kProfilePath[wl_mode]);
        for (const std::string& line : lines) {
            const std::string key = line.substr(0, line.find('='));
            const auto value = profile.get(key);
            EXPECT_EQ(line, value ? key + '=' + *value : key);
        }
    }

    // The journal, or its lines that start so, as a golden file holds it.
    std::string journal_text(std::string_view start = "") {
        std::string text;
        for (const std::string& line : journal(start)) text += line + '\n';
        return text;
    }
};

}  // namespace harness
