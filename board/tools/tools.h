// The board's commands. Each gets its arguments without its name and returns its exit status.
#pragma once

#include <span>
#include <string>

namespace board::tools {

using Words = std::span<const std::string>;

int ated(Words words);
int brctl(Words words);
int ebtables(Words words);
int ethernet_switch(Words words);
int ifconfig(Words words);
int insmod(Words words);
int iptables(Words words);
int iwpriv(Words words);
int killall(Words words);
int led_ctl(Words words);
int ls(Words words);
int mtd(Words words);
int restorebackup(Words words);
int uboot_env(Words words);

// Everything on standard input, read before the call is journaled: in a pipe, the command that
// feeds the other one comes first.
const std::string& standard_input();

// Notes that the daemon of this name runs.
int start_daemon(const std::string& name);

// Prints the complaint and returns the status.
int fail(int status, const std::string& complaint);

}  // namespace board::tools
