// Calls of any exported function by its name, with arguments and results as text.
//
// An argument stands for each parameter that takes something, in the order of the signature;
// usage() tells how each kind is written. What a function fills needs no argument.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "boardctl/library.h"

namespace boardctl {

struct ExportedFunction {
    std::string name;
    std::string help;  // one line
};

// All of them, in the order of their names.
std::vector<ExportedFunction> exported_functions();

// The help text of a function: what it does, its arguments, what it answers.
std::string usage(const std::string& name);

// The folders from which file names of arguments count, as they are when this is made: make it
// before entering the board, and files stay reachable from there.
class Folders {
public:
    Folders();
    Folders(const Folders&) = delete;
    Folders& operator=(const Folders&) = delete;
    ~Folders();

    std::string read(const std::string& path) const;
    void write(const std::string& path, const std::string& bytes) const;

private:
    int open(const std::string& path, int flags) const;

    int root_;
    int current_;
};

// Calls the function and answers {"result": ..., "NAME OF A FILLED PARAMETER": ...}; a function
// without a result has none. Texts stand in it as shown() gives them. Throws, with nothing called,
// UsageError for an unknown name and for arguments that do not fit, and Missing when the library
// lacks the function or a file cannot be read; afterwards Missing when a file cannot be written
// and Failed when the function wrote past a buffer. A function that ends the process ends it with
// the status kFailed and a message.
nlohmann::ordered_json call_function(const Library& library, const std::string& name,
                                     const std::vector<std::string>& arguments,
                                     const Folders& folders = Folders());

}  // namespace boardctl
