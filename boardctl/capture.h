// Takes hold of what the library and its commands print, which is not the answer of a verb.
#pragma once

#include <string>

namespace boardctl {

class Capture {
public:
    Capture();
    ~Capture();
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    void begin();
    void end();  // standard output and error are back

    // What was printed and not yet taken, also by a process that did not come to its end.
    std::string take();
    void put_back(const std::string& text);

    // On the terminal behind the captured standard error, if it is one.
    void progress(const std::string& text);

private:
    int file_;
    int stdout_ = -1;
    int stderr_ = -1;
    bool has_progress_ = false;
};

}  // namespace boardctl
