// Takes hold of what this process and its commands print, until it is asked for.
#pragma once

#include <string>

namespace board::run {

class Capture {
public:
    Capture();
    ~Capture();
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    void begin();
    std::string end();   // what was printed since begin(), and standard output is back
    std::string take();  // what is left of a process that began and did not come to its end

private:
    int file_;
    int stdout_ = -1;
    int stderr_ = -1;
};

}  // namespace board::run
